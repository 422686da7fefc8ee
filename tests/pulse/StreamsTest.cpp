#include "tests/pulse/ServiceFixture.hpp"

#include <algorithm>
#include <map>
#include <optional>

// Streams that really play, and what the service does to them; the volume that a stream has in the
// end, and that both of its channels are heard.

using rigs::OtherProgram;
using rigs::PlayingStream;

class PulseStreams : public OnBothServers {
 protected:
    struct Program {
        std::unique_ptr<OtherProgram> connection;
        std::unique_ptr<PlayingStream> stream;
    };
    Program play(const std::string& role, const OtherProgram::Identity& identity = {},
                 float level = 0) {
        Program program{std::make_unique<OtherProgram>(server_->address(), identity), nullptr};
        program.stream = program.connection->play({.role = role, .level = level});
        EXPECT_TRUE(waitForStream(*program.stream, {65536, 65536}));
        return program;
    }
    void setStream(const PlayingStream& stream, const std::string& volume) {
        server_->pactl({"set-sink-input-volume", stream.index(), volume});
    }
};
INSTANTIATE_TEST_SUITE_P(On, PulseStreams, bothServers, serverName);

TEST_P(PulseStreams, AreMovedByTheCategoryOfTheirRoleAlone) {
    startBoth();
    const Program music = play("music");
    const Program event = play("event");
    const Program phone = play("phone");
    const Program none = play("");
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Ringtone"));
    ASSERT_TRUE(waitForStream(*event.stream, {16384, 16384}));
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "PhoneCall"));
    EXPECT_TRUE(waitForStream(*phone.stream, {32768, 32768}));
    EXPECT_EQ(event.stream->volumes(), (Channels{16384, 16384}));
    EXPECT_EQ(music.stream->volumes(), (Channels{65536, 65536}));
    EXPECT_EQ(none.stream->volumes(), (Channels{65536, 65536}));
    EXPECT_EQ(server_->sinkVolumes("spk"), (Channels{65536, 65536}));
}

TEST_P(PulseStreams, StayWhereTheyAreWhenMediaMovesTheDevice) {
    startBoth();
    const Program music = play("music");
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Audio/Video"));
    ASSERT_TRUE(waitForSink("spk", {16384, 16384}));
    EXPECT_EQ(music.stream->volumes(), (Channels{65536, 65536}));
}

TEST_P(PulseStreams, OfACallAreFollowed) {
    startBoth();
    const Program phone = play("phone");
    setStream(*phone.stream, "16384");
    EXPECT_TRUE(waitForVolume("PhoneCall", 0.25F));
    EXPECT_EQ(volumeOf("Ringtone"), 1);
    server_->pactl({"set-sink-input-mute", phone.stream->index(), "1"});
    EXPECT_TRUE(waitForVolume("PhoneCall", 0));
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "PhoneCall"));
    EXPECT_TRUE(waitForStream(*phone.stream, {32768, 32768}));
    EXPECT_TRUE(waitUntil([&] { return !phone.stream->isMuted(); }));
}

TEST_P(PulseStreams, AreHeardInBothChannelsAfterEveryWayOfMovingThem) {
    startBoth();
    OtherProgram listener(server_->address());
    const auto ear = listener.record("spk.monitor");
    const auto bothAreHeard = [&] { return ear->left() > 0.01F && ear->right() > 0.01F; };
    for (const auto& [role, category] :
         {std::pair("event", "Ringtone"), std::pair("phone", "PhoneCall")}) {
        ASSERT_TRUE(controller_->setVolumeTo(0.75F, category));
        ASSERT_TRUE(waitToRead(category, 0.75F));
        {
            // The stream after the set, which the server gives what it remembers.
            OtherProgram program(server_->address());
            const auto stream = program.play({.role = role, .level = 0.5F});
            EXPECT_TRUE(waitForStream(*stream, {49152, 49152}));
            EXPECT_TRUE(waitUntil(bothAreHeard)) << category;
            ASSERT_TRUE(controller_->setVolumeTo(0.5F, category));
            EXPECT_TRUE(waitForStream(*stream, {32768, 32768}));
            EXPECT_TRUE(waitUntil(bothAreHeard)) << category;
        }
        ASSERT_TRUE(waitUntil([&] { return ear->left() == 0; }));
    }
}

TEST_P(PulseStreams, GoToEveryPlaceOfTheScaleAndBack) {
    startBoth();
    const Program phone = play("phone");
    for (const unsigned raw : {0U, 1U, 328U, 24642U, 65536U}) {
        const float fraction = static_cast<float>(raw) / 65536;
        ASSERT_TRUE(controller_->setVolumeTo(fraction, "PhoneCall"));
        EXPECT_TRUE(waitForStream(*phone.stream, {raw, raw})) << raw;
        EXPECT_TRUE(waitToRead("PhoneCall", fraction)) << raw;
    }
    runFor(0.4);  // What happens to a stream that has only begun is no wish of anybody's.
    for (const unsigned raw : {24642U, 1U, 65537U, 98304U, 0U}) {
        setStream(*phone.stream, std::to_string(raw));
        EXPECT_TRUE(waitToRead("PhoneCall", static_cast<float>(std::min(raw, 65536U)) / 65536))
            << raw;
    }
}

TEST_P(PulseStreams, KeepTheirBalance) {
    startBoth();
    const Program phone = play("phone");
    server_->pactl({"set-sink-input-volume", phone.stream->index(), "40000", "20000"});
    ASSERT_TRUE(waitForVolume("PhoneCall", 40000.0F / 65536));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "PhoneCall"));
    EXPECT_TRUE(waitForStream(*phone.stream, {16384, 8192}));
}

// Both servers have passing values for what is new; none of them may be shown.
TEST_P(PulseStreams, AreNeverToldAtAPassingVolumeWhenTheyBegin) {
    startBoth();
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "PhoneCall"));
    ASSERT_TRUE(waitForVolume("PhoneCall", 0.5F));
    runFor(0.1);
    posted_.clear();
    OtherProgram program(server_->address());
    const auto phone = program.play({.role = "phone"});
    ASSERT_TRUE(waitForStream(*phone, {32768, 32768}));
    runFor(0.3);
    for (const float volume : volumesPosted("PhoneCall"))
        EXPECT_NEAR(volume, 0.5F, volumeTolerance);
    EXPECT_NEAR(volumeOf("PhoneCall"), 0.5F, volumeTolerance);
}

// A session manager restores a volume of its own when a stream comes: some milliseconds late, and
// often while ours for it is on its way. Each round is a chance for it.
TEST_P(PulseStreams, ComeAtWhatWasSetBeforeThemAndNothingElseIsTold) {
    startBoth();
    const std::map<std::string, std::string> roles = {
        {"Ringtone", "event"}, {"PhoneCall", "phone"}, {"role:music", "music"}, {"app:Game", ""}};
    auto first = std::make_optional(play("", {.name = "Game"}));
    ASSERT_TRUE(waitToRead("app:Game", 1));
    first.reset();
    constexpr int rounds = 10;
    for (int round = 0; round < rounds; ++round) {
        const unsigned raw = round % 2 == 0 ? 16384 : 32768;
        const float volume = static_cast<float>(raw) / 65536;
        for (const auto& [category, role] : roles)
            ASSERT_TRUE(controller_->setVolumeTo(volume, category));
        runFor(round % 3 == 0 ? 0 : 0.1);  // Also streams that come before all that is through.
        posted_.clear();
        OtherProgram game(server_->address(), {.name = "Game"});
        OtherProgram other(server_->address());
        std::map<std::string, std::unique_ptr<PlayingStream>> streams;
        for (const auto& [category, role] : roles)
            streams[category] = (role.empty() ? game : other).play({.role = role});
        runFor(0.4);
        for (const auto& [category, stream] : streams) {
            EXPECT_EQ(stream->volumes(), (Channels{raw, raw})) << category << ", " << round;
            for (const float told : volumesPosted(category))
                EXPECT_NEAR(told, volume, volumeTolerance) << category << ", " << round;
        }
    }
}

// Newer session managers keep what is set for a role from its streams: a mixer gives it to them.
TEST_P(PulseStreams, OfARoleComeAtWhatAnotherProgramSetForIt) {
    startBoth();
    OtherProgram other(server_->address());
    for (const unsigned raw : {16384U, 49152U}) {
        other.writeRoleEntry("phone", {raw, raw});
        other.writeRoleEntry("music", {raw, raw});
        ASSERT_TRUE(waitToRead("PhoneCall", static_cast<float>(raw) / 65536));
        const auto phone = other.play({.role = "phone"});
        const auto music = other.play({.role = "music"});  // Of which there is no row.
        EXPECT_TRUE(waitForStream(*phone, {raw, raw}));
        EXPECT_TRUE(waitForStream(*music, {raw, raw}));
        runFor(0.4);
        EXPECT_EQ(volumeOf("PhoneCall"), static_cast<float>(raw) / 65536);
    }
}

TEST_P(PulseStreams, OfARoleComeAtWhatWasSetBeforeTheMixerCame) {
    server_->startAndWait();
    OtherProgram other(server_->address());
    other.writeRoleEntry("phone", {16384, 16384});
    startControllerAndWait();
    ASSERT_TRUE(waitToRead("PhoneCall", 0.25F));
    const auto phone = other.play({.role = "phone"});
    EXPECT_TRUE(waitForStream(*phone, {16384, 16384}));
}

// What the session manager remembers of a stream that ended in between is its own affair.
TEST_P(PulseStreams, MayEndWhileTheyAreMoved) {
    startBoth();
    for (int i = 0; i < 20; ++i) {
        OtherProgram program(server_->address());
        auto phone = program.play({.role = "phone"});
        controller_->setVolumeTo(0.25F, "PhoneCall");
        phone.reset();
        controller_->setVolumeTo(0.75F, "PhoneCall");
    }
    EXPECT_TRUE(isReady());
    OtherProgram program(server_->address());
    const auto phone = program.play({.role = "phone"});
    ASSERT_TRUE(waitUntil([&] { return volumeOf("PhoneCall") != unreadable; }));
    controller_->setVolumeTo(0.5F, "PhoneCall");
    EXPECT_TRUE(waitForStream(*phone, {32768, 32768}));
}
