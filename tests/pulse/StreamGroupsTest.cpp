#include "backends/pulse/categories/StreamGroups.hpp"

#include <gtest/gtest.h>

using namespace pulse;

using Kind = VolumeObject::Kind;

namespace {

const VolumeObject event{Kind::Role, "event"};
const VolumeObject phone{Kind::Role, "phone"};
const VolumeObject browser{Kind::Application, "Firefox"};
const VolumeObject conference{Kind::Conference, ""};

pa_cvolume stereo(pa_volume_t loudness) {
    return {2, {loudness, loudness}};
}

SinkInput playing(std::uint32_t index, pa_volume_t loudness, const char* role = "") {
    return {.index = index, .volume = stereo(loudness), .role = role};
}

std::vector<std::uint32_t> indexesOf(const ServerMirror& mirror, const VolumeObject& object) {
    std::vector<std::uint32_t> indexes;
    for (const SinkInput* stream : streamsOf(mirror, object))
        indexes.push_back(stream->index);
    return indexes;
}

using Indexes = std::vector<std::uint32_t>;

std::optional<float> heardOf(const ServerMirror& mirror, const VolumeObject& object) {
    const auto level = levelOf(mirror, object);
    return level ? std::optional(level->heard()) : std::nullopt;
}

}  // namespace

TEST(StreamGroups, GatherTheStreamsOfARole) {
    ServerMirror mirror;
    mirror.sinkInputs = {playing(1, 100, "event"), playing(2, 200, "music"),
                         playing(3, 300, "Event"), playing(4, 400)};
    EXPECT_EQ(indexesOf(mirror, event), (Indexes{1, 3}));
    EXPECT_EQ(indexesOf(mirror, {Kind::Role, "music"}), Indexes{2});
    EXPECT_EQ(indexesOf(mirror, {Kind::Sink, "event"}), Indexes{});
    mirror.sinkInputs = {playing(5, 500, "Movie"), playing(6, 600, "Notification")};
    EXPECT_EQ(indexesOf(mirror, {Kind::Role, "video"}), Indexes{5});
    EXPECT_EQ(indexesOf(mirror, event), Indexes{6});
}

TEST(StreamGroups, GatherTheStreamsOfAnApplicationByAnyOfItsNames) {
    ServerMirror mirror;
    mirror.sinkInputs = {{.index = 1, .applicationName = "Firefox"},
                         {.index = 2, .applicationId = "firefox"},
                         {.index = 3, .binary = "FIREFOX"},
                         {.index = 4, .applicationName = "Firefox2"},
                         {.index = 5}};
    EXPECT_EQ(indexesOf(mirror, browser), (Indexes{1, 2, 3}));
}

TEST(StreamGroups, GatherTheStreamsOfWhoeverPlaysAndRecords) {
    ServerMirror mirror;
    mirror.sinkInputs = {{.index = 1, .processId = "10"},
                         {.index = 2, .processId = "11"},
                         {.index = 3, .role = "phone", .processId = "11"},
                         {.index = 4, .role = "music", .processId = "11"},
                         {.index = 5}};
    EXPECT_EQ(indexesOf(mirror, conference), Indexes{});
    mirror.sourceOutputs = {{.processId = "11"}, {}};
    EXPECT_EQ(indexesOf(mirror, conference), (Indexes{2, 4}));
}

TEST(StreamGroups, AskTheClientWhereAStreamDoesNotNameItsProcess) {
    ServerMirror mirror;
    mirror.clients[3] = {.processId = "10", .binary = "firefox"};
    mirror.clients[4] = {.processId = "10"};
    mirror.sinkInputs = {{.index = 1, .clientIndex = 3}, {.index = 2, .clientIndex = 99}};
    mirror.sourceOutputs = {{.clientIndex = 4}, {.clientIndex = 98}};
    EXPECT_EQ(indexesOf(mirror, conference), Indexes{1});
    EXPECT_EQ(indexesOf(mirror, browser), Indexes{1});
}

TEST(StreamGroups, LeaveOutThePlumbingAndWhatCannotBeMoved) {
    ServerMirror mirror;
    mirror.sinkInputs = {{.index = 1, .hasVolume = false, .applicationName = "Firefox"},
                         {.index = 2, .role = "Loopback", .applicationName = "Firefox"},
                         {.index = 3, .role = "filter", .applicationName = "Firefox"},
                         {.index = 4, .role = "abstract", .applicationName = "Firefox"},
                         {.index = 5, .applicationName = "Firefox", .linkGroup = "loopback-1"},
                         {.index = 6, .applicationName = "Firefox"}};
    EXPECT_EQ(indexesOf(mirror, browser), Indexes{6});
}

TEST(StreamGroups, AreAsLoudAsTheLoudestStream) {
    ServerMirror mirror;
    EXPECT_EQ(heardOf(mirror, {Kind::Role, "music"}), std::nullopt);
    mirror.sinkInputs = {playing(1, 16384, "music"), playing(2, 32768, "music")};
    EXPECT_EQ(heardOf(mirror, {Kind::Role, "music"}), 0.5F);
    mirror.sinkInputs[1].mute = Mute::On;
    EXPECT_EQ(heardOf(mirror, {Kind::Role, "music"}), 0.25F);
    mirror.sinkInputs[0].mute = Mute::On;
    EXPECT_EQ(heardOf(mirror, {Kind::Role, "music"}), 0);
}

TEST(StreamGroups, AreMutedWhereAllTheirStreamsAre) {
    ServerMirror mirror;
    const VolumeObject music{Kind::Role, "music"};
    mirror.sinkInputs = {playing(1, 16384, "music"), playing(2, 32768, "music")};
    mirror.sinkInputs[1].mute = Mute::On;
    EXPECT_EQ(levelOf(mirror, music), (Level{0.25F, Mute::Off}));
    mirror.sinkInputs[0].mute = Mute::On;
    EXPECT_EQ(levelOf(mirror, music), (Level{0.5F, Mute::On}));
    mirror.sinkInputs[0].volume = stereo(0);
    mirror.sinkInputs[0].mute = Mute::Off;
    EXPECT_EQ(levelOf(mirror, music), (Level{0, Mute::Off})) << "which is not muted but at 0";
}

TEST(StreamGroups, AnswerTheEntryWhereNothingOfTheRolePlays) {
    ServerMirror mirror;
    EXPECT_EQ(heardOf(mirror, phone), std::nullopt);
    mirror.restoreEntries.emplace();
    EXPECT_EQ(heardOf(mirror, phone), 1);
    (*mirror.restoreEntries)[roleEntryName("phone")] = {.volume = stereo(16384)};
    EXPECT_EQ(heardOf(mirror, phone), 0.25F);
    mirror.sinkInputs = {playing(1, 32768, "phone")};
    EXPECT_EQ(heardOf(mirror, phone), 0.5F);
}

TEST(StreamGroups, AnswerTheEntryOfEventSoundsWhereTheServerKeepsItInLine) {
    ServerMirror mirror;
    mirror.restoreEntries.emplace()[roleEntryName("event")] = {.volume = stereo(16384)};
    mirror.sinkInputs = {playing(1, 32768, "event")};
    EXPECT_EQ(heardOf(mirror, event), 0.25F);
    mirror.server.pipeWire = Version{0, 3, 65};
    EXPECT_EQ(heardOf(mirror, event), 0.5F);
    mirror.server.pipeWire.reset();
    mirror.restoreEntries.reset();
    EXPECT_EQ(heardOf(mirror, event), 0.5F);
}

TEST(StreamGroups, AreWrittenAsStreamsAndARoleAsItsEntryToo) {
    ServerMirror mirror;
    mirror.sinks["spk"] = {.name = "spk"};
    mirror.sinkInputs = {playing(1, 1, "phone"), playing(2, 1, "phone")};
    mirror.sinkInputs[1].applicationName = "Firefox";
    const Target first{.kind = Target::Kind::SinkInput, .sinkInputIndex = 1};
    const Target second{.kind = Target::Kind::SinkInput, .sinkInputIndex = 2};
    const Target entry{.kind = Target::Kind::RestoreEntry, .name = roleEntryName("phone")};
    using Targets = std::vector<Target>;
    EXPECT_EQ(targetsOf(mirror, phone), (Targets{first, second}));
    mirror.restoreEntries.emplace();
    EXPECT_EQ(targetsOf(mirror, phone), (Targets{entry, first, second}));
    EXPECT_EQ(targetsOf(mirror, browser), Targets{second});
    EXPECT_EQ(targetsOf(mirror, conference), Targets{});
    EXPECT_EQ(targetsOf(mirror, {Kind::Sink, "spk"}),
              (Targets{{.kind = Target::Kind::Sink, .name = "spk"}}));
    EXPECT_EQ(targetsOf(mirror, {Kind::Source, "spk"}), Targets{});
}
