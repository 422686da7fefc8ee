#include "backends/pulse/writes/StreamMemory.hpp"

#include <gtest/gtest.h>

using namespace pulse;

using Kind = VolumeObject::Kind;

namespace {

const VolumeObject browser{Kind::Application, "Firefox"};
const VolumeObject conference{Kind::Conference, ""};
using Objects = std::vector<VolumeObject>;

constexpr pa_volume_t half = 32768;
constexpr pa_volume_t quarter = 16384;

}  // namespace

class StreamMemoryTest : public testing::Test {
 protected:
    void play(std::uint32_t index, pa_volume_t raw) {
        mirror.sinkInputs.push_back({.index = index,
                                     .volume = {2, {raw, raw}},
                                     .applicationName = "Firefox",
                                     .processId = "10"});
    }
    void setVolume(std::uint32_t index, pa_volume_t raw) {
        for (SinkInput& stream : mirror.sinkInputs)
            if (stream.index == index) stream.volume = {2, {raw, raw}};
    }
    Objects observe() {
        return memory.observe(mirror, now, [this](const VolumeObject&) { return moving; });
    }
    void remember(const VolumeObject& object, float fraction) {
        memory.remember(object, {fraction, Mute::Off}, {}, mirror, now);
    }
    void mute(const VolumeObject& object, Mute mute, float at = 0.5F) {
        memory.remember(object, {.mute = mute}, {at, Mute::Off}, mirror, now);
    }
    /// The volume; nullopt when nothing is remembered.
    std::optional<float> remembered(const VolumeObject& object) const {
        const auto level = memory.remembered(object);
        return level ? std::optional(level->volume) : std::nullopt;
    }

    double now = 100;
    bool moving = false;
    ServerMirror mirror;
    StreamMemory memory;
};

TEST_F(StreamMemoryTest, RemembersNothingThatTheUserDidNotMove) {
    play(1, half);
    EXPECT_EQ(observe(), Objects{});
    EXPECT_EQ(remembered(browser), std::nullopt);
}

TEST_F(StreamMemoryTest, LeavesDevicesToTheServerAndRolesToPulseAudio) {
    for (const Kind kind : {Kind::Sink, Kind::Source, Kind::Role}) {
        remember({kind, "x"}, 0.5F);
        EXPECT_EQ(memory.remembered({kind, "x"}), std::nullopt);
    }
    mirror.server.pipeWire = Version{};
    for (const Kind kind : {Kind::Sink, Kind::Source}) {
        remember({kind, "x"}, 0.5F);
        EXPECT_EQ(memory.remembered({kind, "x"}), std::nullopt);
    }
}

TEST_F(StreamMemoryTest, RemembersARoleUntilWhatPipeWireKeepsBecomesSomethingElse) {
    const VolumeObject phone{Kind::Role, "phone"};
    const auto setEntry = [&](pa_volume_t raw) {
        (*mirror.restoreEntries)[roleEntryName("phone")] = {.volume = {2, {raw, raw}}};
    };
    mirror.server.pipeWire = Version{};
    mirror.restoreEntries.emplace();
    moving = true;
    remember(phone, 0.02F);
    observe();
    EXPECT_EQ(remembered(phone), 0.02F) << "the entry is on its way";
    moving = false;
    setEntry(1311 + 20);  // As near as its decimals get.
    mirror.sinkInputs.push_back({.index = 1, .volume = {2, {half, half}}, .role = "phone"});
    EXPECT_EQ(observe(), Objects{phone});
    EXPECT_EQ(remembered(phone), 0.02F);
    setEntry(1311 + 200);
    EXPECT_EQ(observe(), Objects{});
    EXPECT_EQ(remembered(phone), std::nullopt);
}

TEST_F(StreamMemoryTest, GivesARolesStreamsWhatAnotherProgramSetWhereTheServerDoesNot) {
    const VolumeObject music{Kind::Role, "music"};
    mirror.server.pipeWire = Version{1, 4, 2};
    mirror.clients[1] = {.name = "WirePlumber", .version = "0.5.8"};
    auto& entries = mirror.restoreEntries.emplace();
    const auto keep = [&](pa_volume_t raw) {
        entries[roleEntryName("music")].volume = {2, {raw, raw}};
        memory.watchKeptRoles(mirror, now);
        return observe();
    };
    keep(half);
    EXPECT_EQ(memory.settingFor(music), (Setting{0.5F}));
    keep(quarter);
    EXPECT_EQ(memory.settingFor(music), (Setting{0.25F}));
    mirror.sinkInputs.push_back({.index = 1, .volume = {2, {half, half}}, .role = "music"});
    EXPECT_EQ(observe(), Objects{music});
    now += 1;
    setVolume(1, half + 1000);
    observe();
    EXPECT_EQ(memory.settingFor(music), (Setting{fractionFromRaw(half + 1000)}))
        << "who moves a stream is later than who set what is kept";
}

TEST_F(StreamMemoryTest, LeavesARoleThatPlaysToItsStreamsWhenItIsFirstSeen) {
    mirror.server.pipeWire = Version{1, 4, 2};
    mirror.clients[1] = {.name = "WirePlumber", .version = "0.5.8"};
    mirror.restoreEntries.emplace()[roleEntryName("music")].volume = {2, {quarter, quarter}};
    mirror.sinkInputs.push_back({.index = 1, .volume = {2, {half, half}}, .role = "music"});
    memory.watchKeptRoles(mirror, now);
    EXPECT_EQ(observe(), Objects{});
    EXPECT_EQ(memory.settingFor({Kind::Role, "music"}), Setting{});
}

TEST_F(StreamMemoryTest, LearnsAWatchedRoleFromItsStreamsWhileWhatPipeWireKeepsGoesStale) {
    const VolumeObject phone{Kind::Role, "phone"};
    const auto setEntry = [&](pa_volume_t raw) {
        (*mirror.restoreEntries)[roleEntryName("phone")] = {.volume = {2, {raw, raw}}};
    };
    mirror.server.pipeWire = Version{};
    mirror.restoreEntries.emplace();
    setEntry(quarter);
    mirror.sinkInputs.push_back({.index = 1, .volume = {2, {quarter, quarter}}, .role = "phone"});
    memory.watch(phone, mirror, now);
    observe();
    EXPECT_EQ(memory.remembered(phone), std::nullopt) << "nobody has moved it";
    setVolume(1, half);
    EXPECT_EQ(observe(), Objects{});
    mirror.sinkInputs.clear();
    observe();
    EXPECT_EQ(memory.remembered(phone), (Level{0.5F, Mute::Off}));
    setEntry(quarter / 2);
    observe();
    EXPECT_EQ(memory.remembered(phone), std::nullopt) << "the last one moved the entry";
}

TEST_F(StreamMemoryTest, LearnsWhatTheServerKeepsOfAnApplicationThatPlaysNothing) {
    const auto setEntry = [&](pa_volume_t raw) {
        (*mirror.restoreEntries)["sink-input-by-application-name:firefox"] = {
            .volume = {2, {raw, raw}}};
    };
    mirror.restoreEntries.emplace();
    play(1, half);
    remember(browser, 0.25F);
    setEntry(half);  // As it was before, told late.
    observe();
    EXPECT_EQ(memory.remembered(browser), (Level{0.25F, Mute::Off}));
    mirror.sinkInputs.clear();
    observe();
    EXPECT_EQ(memory.remembered(browser), (Level{0.25F, Mute::Off}));
    setEntry(PA_VOLUME_NORM);
    moving = true;
    observe();
    EXPECT_EQ(memory.remembered(browser), (Level{0.25F, Mute::Off})) << "ours is on its way";
    moving = false;
    observe();
    EXPECT_EQ(memory.remembered(browser), (Level{1, Mute::Off}));
}

TEST_F(StreamMemoryTest, KeepsWhatTheUserSetAsAStreamEndedThatTheServerStoresLate) {
    mirror.restoreEntries.emplace();
    play(1, PA_VOLUME_NORM);
    remember(browser, 0.25F);
    mirror.sinkInputs.clear();
    (*mirror.restoreEntries)["sink-input-by-application-name:Firefox"] = {
        .volume = {2, {PA_VOLUME_NORM, PA_VOLUME_NORM}}};
    observe();
    EXPECT_EQ(remembered(browser), 0.25F);
}

TEST_F(StreamMemoryTest, RemembersARoleOfWhichPipeWireKeepsNothing) {
    mirror.server.pipeWire = Version{};
    remember({Kind::Role, "phone"}, 0.25F);
    observe();
    EXPECT_EQ(remembered({Kind::Role, "phone"}), 0.25F);
}

TEST_F(StreamMemoryTest, BringsAStreamThatComesLater) {
    play(1, half);
    remember(browser, 0.25F);
    setVolume(1, quarter);
    EXPECT_EQ(observe(), Objects{});
    play(2, PA_VOLUME_NORM);
    EXPECT_EQ(observe(), Objects{browser});
    setVolume(2, quarter);
    EXPECT_EQ(observe(), Objects{});
    EXPECT_EQ(remembered(browser), 0.25F);
}

TEST_F(StreamMemoryTest, RemembersWhileNothingPlays) {
    play(1, half);
    remember(browser, 0.25F);
    mirror.sinkInputs.clear();
    EXPECT_EQ(observe(), Objects{});
    EXPECT_EQ(remembered(browser), 0.25F);
    remember(browser, 0.5F);
    play(2, PA_VOLUME_NORM);
    EXPECT_EQ(observe(), Objects{browser});
    EXPECT_EQ(remembered(browser), 0.5F);
}

TEST_F(StreamMemoryTest, LeavesANewStreamAloneThatHasTheVolume) {
    remember(browser, 0.25F);
    play(1, quarter + 2);
    EXPECT_EQ(observe(), Objects{});
    play(2, quarter + 3);
    EXPECT_EQ(observe(), Objects{browser});
}

TEST_F(StreamMemoryTest, BringsANewStreamAgainThatTheServerMovedBack) {
    remember(browser, 0.25F);
    play(1, quarter);
    EXPECT_EQ(observe(), Objects{});
    now += 0.29;
    setVolume(1, half);
    EXPECT_EQ(observe(), Objects{browser});
    EXPECT_EQ(remembered(browser), 0.25F);
}

TEST_F(StreamMemoryTest, WaitsForItsOwnMoveBeforeItBringsAStreamAgain) {
    remember(browser, 0.25F);
    play(1, half);
    moving = true;
    EXPECT_EQ(observe(), Objects{browser});
    EXPECT_EQ(observe(), Objects{});
    moving = false;
    EXPECT_EQ(observe(), Objects{browser});
}

TEST_F(StreamMemoryTest, LearnsWhatSomebodyElseSetsOnAStreamThatIsNotNew) {
    remember(browser, 0.25F);
    play(1, quarter);
    observe();
    now += 0.31;
    setVolume(1, half);
    EXPECT_EQ(observe(), Objects{});
    EXPECT_EQ(remembered(browser), 0.5F);
}

TEST_F(StreamMemoryTest, DoesNotLearnFromItsOwnMove) {
    play(1, half);
    remember(browser, 0.25F);
    moving = true;
    setVolume(1, 20000);
    observe();
    setVolume(1, quarter + 1);
    observe();
    moving = false;
    observe();
    EXPECT_EQ(remembered(browser), 0.25F);
}

TEST_F(StreamMemoryTest, DoesNotLearnSilenceFromMuting) {
    play(1, half);
    remember(browser, 0.5F);
    mirror.sinkInputs[0].mute = Mute::On;
    observe();
    EXPECT_EQ(remembered(browser), 0.5F);
}

TEST_F(StreamMemoryTest, GivesAMuteToStreamsThatComeLaterAndNoVolume) {
    play(1, half);
    mute(browser, Mute::On);
    mirror.sinkInputs[0].mute = Mute::On;
    EXPECT_EQ(observe(), Objects{});
    play(2, quarter);
    EXPECT_EQ(observe(), Objects{browser});
    EXPECT_EQ(memory.settingFor(browser), (Setting{.mute = Mute::On}));
    mirror.sinkInputs[1].mute = Mute::On;
    EXPECT_EQ(observe(), Objects{});
    mirror.sinkInputs.clear();
    observe();
    EXPECT_EQ(memory.remembered(browser), (Level{0.5F, Mute::On}));
    remember(browser, 0.25F);
    play(3, half);
    mirror.sinkInputs[0].mute = Mute::On;  // As the server remembers it of the last one.
    EXPECT_EQ(observe(), Objects{browser});
    EXPECT_EQ(memory.settingFor(browser), (Setting{0.25F, Mute::Off}));
}

TEST_F(StreamMemoryTest, LeavesAStreamMutedThatBeginsSoWhereTheUserMutedNothing) {
    remember(browser, 0.25F);
    play(1, quarter);
    mirror.sinkInputs[0].mute = Mute::On;
    EXPECT_EQ(observe(), Objects{});
    EXPECT_EQ(memory.settingFor(browser), (Setting{.fraction = 0.25F}));
}

TEST_F(StreamMemoryTest, LearnsThatSomebodyElseEndedAMute) {
    play(1, half);
    mute(browser, Mute::On);
    mirror.sinkInputs[0].mute = Mute::On;
    moving = true;
    observe();
    moving = false;
    now += 0.31;
    mirror.sinkInputs[0].mute = Mute::Off;
    EXPECT_EQ(observe(), Objects{});
    EXPECT_EQ(memory.remembered(browser), (Level{0.5F, Mute::Off}));
}

TEST_F(StreamMemoryTest, RemembersAMutedRoleUntilPipeWireKeepsItUnmuted) {
    const VolumeObject phone{Kind::Role, "phone"};
    mirror.server.pipeWire = Version{};
    RestoreEntry& entry = mirror.restoreEntries.emplace()[roleEntryName("phone")];
    entry = {.volume = {2, {quarter, quarter}}, .mute = Mute::On};
    mute(phone, Mute::On, 0.5F);
    EXPECT_EQ(observe(), Objects{});
    EXPECT_EQ(memory.remembered(phone), (Level{0.5F, Mute::On})) << "only the mute was given";
    entry.mute = Mute::Off;
    observe();
    EXPECT_EQ(memory.remembered(phone), std::nullopt);
}

TEST_F(StreamMemoryTest, TakesEveryStreamAsNewAfterTheConnectionsEnd) {
    play(1, quarter);
    remember(browser, 0.25F);
    memory.forgetStreams();
    setVolume(1, half);
    EXPECT_EQ(observe(), Objects{browser});
    EXPECT_EQ(remembered(browser), 0.25F);
}

TEST_F(StreamMemoryTest, TakesAStreamAsNewThatJoinsAConference) {
    mirror.sourceOutputs = {{.processId = "10"}};
    remember(conference, 0.25F);
    mirror.sourceOutputs.clear();
    play(1, half);
    EXPECT_EQ(observe(), Objects{});
    mirror.sourceOutputs = {{.processId = "10"}};
    EXPECT_EQ(observe(), Objects{conference});
}

TEST_F(StreamMemoryTest, LetsOneObjectAloneMoveANewStreamOfTwo) {
    mirror.sourceOutputs = {{.processId = "10"}};
    remember(browser, 0.25F);
    remember(conference, 0.5F);
    play(1, PA_VOLUME_NORM);
    EXPECT_EQ(observe(), Objects{browser});
    setVolume(1, quarter);
    EXPECT_EQ(observe(), Objects{});
    EXPECT_EQ(remembered(conference), 0.25F) << "which is what it is at now";
}
