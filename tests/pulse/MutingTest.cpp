#include "tests/pulse/ServiceFixture.hpp"

#include <csignal>

// Mute: what it silences on the server keeps its volume, and comes back at it.

using Mute = AVSystemController::Mute;
using Level = AVSystemController::Level;

class PulseMuting : public OnBothServers {
 protected:
    std::string sinkMute(const std::string& sink) const {
        return server_->pactl({"get-sink-mute", sink});
    }
    bool waitForSinkMute(const std::string& sink, const std::string& answer) const {
        return waitUntil([&] { return sinkMute(sink) == "Mute: " + answer + "\n"; });
    }
    static bool waitForMute(const rigs::PlayingStream& stream, Mute mute) {
        return waitUntil([&] { return stream.isMuted() == (mute == Mute::On); });
    }
    bool waitForLevel(const std::string& category, const Level& level) {
        return waitUntil([&] { return controller_->levelOf(category) == level; });
    }
    bool waitUntilWritten() {
        return waitUntil([&] { return !controller_->isWriting(); });
    }
    std::unique_ptr<rigs::OtherProgram> game() {
        return std::make_unique<rigs::OtherProgram>(
            server_->address(), rigs::OtherProgram::Identity{.name = "Game", .processId = 4001});
    }
};
INSTANTIATE_TEST_SUITE_P(On, PulseMuting, bothServers, serverName);

TEST_P(PulseMuting, KeepsTheDevicesVolumeAndComesBackToIt) {
    startBoth();
    server_->pactl({"set-sink-volume", "spk", "40000", "20000"});
    const float volume = 40000.0F / 65536;
    ASSERT_TRUE(waitForVolume("Audio/Video", volume));
    EXPECT_EQ(controller_->levelOf("Audio/Video"), (Level{volume, Mute::Off}));
    ASSERT_TRUE(controller_->setMute(Mute::On, "Audio/Video"));
    EXPECT_EQ(volumeOf("Audio/Video"), 0) << "at once";
    EXPECT_EQ(controller_->levelOf("Audio/Video"), (Level{volume, Mute::On}));
    EXPECT_TRUE(waitForVolume("Audio/Video", 0));
    EXPECT_TRUE(waitForSinkMute("spk", "yes"));
    ASSERT_TRUE(waitUntilWritten());
    EXPECT_EQ(controller_->levelOf("Audio/Video"), (Level{volume, Mute::On}));
    ASSERT_TRUE(controller_->setMute(Mute::Off, "Audio/Video"));
    EXPECT_TRUE(waitForVolume("Audio/Video", volume));
    EXPECT_TRUE(waitForSinkMute("spk", "no"));
    EXPECT_EQ(server_->sinkVolumes("spk"), (Channels{40000, 20000}));
}

TEST_P(PulseMuting, LeavesWhatIsAmplifiedAsItIs) {
    server_->startAndWait();
    server_->pactl({"set-sink-volume", "spk", "98304"});
    startControllerAndWait();
    ASSERT_TRUE(controller_->toggleMute("Audio/Video"));
    ASSERT_TRUE(waitForSinkMute("spk", "yes"));
    ASSERT_TRUE(controller_->stepVolumeBy(0.05, "Audio/Video"));
    EXPECT_TRUE(waitForSinkMute("spk", "no"));
    EXPECT_EQ(server_->sinkVolumes("spk"), (Channels{98304, 98304})) << "there is no way up";
}

TEST_P(PulseMuting, EndsWithAStepFromTheVolumeThatItKept) {
    startBoth();
    server_->pactl({"set-sink-volume", "spk", "32768"});
    server_->pactl({"set-sink-mute", "spk", "1"});
    ASSERT_TRUE(waitForLevel("Audio/Video", {0.5F, Mute::On}));
    ASSERT_TRUE(controller_->stepVolumeBy(0.25, "Audio/Video"));
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.75F));
    EXPECT_TRUE(waitForSinkMute("spk", "no"));
}

// Neither waits for the other's answer: the mirror is behind both.
TEST_P(PulseMuting, TogetherWithAVolumeEndsAsTheLastOfThemSays) {
    startBoth();
    for (int i = 0; i < 10; ++i) {
        controller_->setVolumeTo(0.25F, "Audio/Video");
        controller_->setMute(Mute::On, "Audio/Video");
        ASSERT_TRUE(waitUntilWritten());
        ASSERT_EQ(sinkMute("spk"), "Mute: yes\n") << i;
        ASSERT_TRUE(waitForSink("spk", {16384, 16384})) << i;
        controller_->setMute(Mute::On, "Audio/Video");
        controller_->setVolumeTo(0.5F, "Audio/Video");
        ASSERT_TRUE(waitUntilWritten());
        ASSERT_EQ(sinkMute("spk"), "Mute: no\n") << i;
        ASSERT_TRUE(waitForSink("spk", {32768, 32768})) << i;
        controller_->setMute(Mute::On, "Audio/Video");
        runFor(0.0001 * i);
        controller_->setVolumeTo(0.75F, "Audio/Video");
        ASSERT_TRUE(waitUntilWritten());
        ASSERT_EQ(sinkMute("spk"), "Mute: no\n") << i;
    }
}

TEST_P(PulseMuting, TellsOfAVolumeThatMovesBehindIt) {
    startBoth();
    server_->pactl({"set-sink-mute", "spk", "1"});
    ASSERT_TRUE(waitForVolume("Audio/Video", 0));
    posted_.clear();
    server_->pactl({"set-sink-volume", "spk", "16384"});
    ASSERT_TRUE(waitUntil([&] { return !volumesPosted("Audio/Video").empty(); }));
    EXPECT_EQ(volumesPosted("Audio/Video"), std::vector<float>{0});
    EXPECT_EQ(controller_->levelOf("Audio/Video"), (Level{0.25F, Mute::On}));
}

TEST_P(PulseMuting, SilencesInputs) {
    startBoth();
    ASSERT_TRUE(controller_->setMute(Mute::On, "source:hp.monitor"));
    EXPECT_TRUE(waitUntil([&] {
        return server_->pactl({"get-source-mute", "hp.monitor"}) == "Mute: yes\n";
    }));
    EXPECT_EQ(sinkMute("hp"), "Mute: no\n");
}

TEST_P(PulseMuting, SilencesEachStreamOfAnApplicationAndKeepsItsOwnVolume) {
    startBoth();
    const auto program = game();
    const auto sounds = program->play({});
    const auto voices = program->play({.role = "game", .channels = 1});
    ASSERT_TRUE(waitToRead("app:Game", 1));
    server_->pactl({"set-sink-input-volume", voices->index(), "32768"});
    server_->pactl({"set-sink-input-volume", sounds->index(), "16384"});
    ASSERT_TRUE(waitForVolume("app:Game", 0.5F));
    ASSERT_TRUE(controller_->setMute(Mute::On, "app:Game"));
    EXPECT_TRUE(waitForMute(*sounds, Mute::On));
    EXPECT_TRUE(waitForMute(*voices, Mute::On));
    ASSERT_TRUE(waitForVolume("app:Game", 0));
    EXPECT_EQ(controller_->levelOf("app:Game"), (Level{0.5F, Mute::On}));
    const auto later = program->play({.role = "music"});
    EXPECT_TRUE(waitForMute(*later, Mute::On)) << "which came while the application was muted";
    EXPECT_TRUE(waitForStream(*later, Channels{65536, 65536}));
    ASSERT_TRUE(waitUntilWritten());
    ASSERT_TRUE(controller_->setMute(Mute::Off, "app:Game"));
    for (const auto* stream : {&sounds, &voices, &later})
        EXPECT_TRUE(waitForMute(**stream, Mute::Off));
    EXPECT_EQ(sounds->volumes(), (Channels{16384, 16384}));
    EXPECT_EQ(voices->volumes(), (Channels{32768}));
}

TEST_P(PulseMuting, LastsWhileAnApplicationPlaysNothing) {
    startBoth();
    const auto program = game();
    auto sounds = program->play({});
    ASSERT_TRUE(waitToRead("app:Game", 1));
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "app:Game"));
    ASSERT_TRUE(controller_->setMute(Mute::On, "app:Game"));
    ASSERT_TRUE(waitForMute(*sounds, Mute::On));
    sounds.reset();
    runFor(0.2);
    EXPECT_EQ(controller_->levelOf("app:Game"), (Level{0.5F, Mute::On}));
    sounds = program->play({});
    EXPECT_TRUE(waitForMute(*sounds, Mute::On));
    EXPECT_TRUE(waitForStream(*sounds, {32768, 32768}));
    sounds.reset();
    runFor(0.2);
    ASSERT_TRUE(controller_->setMute(Mute::Off, "app:Game"));
    runFor(0.2);
    // Both servers remember that the last one was muted, and would begin so.
    sounds = program->play({});
    EXPECT_TRUE(waitForMute(*sounds, Mute::Off));
    EXPECT_EQ(volumeOf("app:Game"), 0.5F);
}

TEST_P(PulseMuting, OfAnApplicationEndsWhereSomebodyElseEndsIt) {
    startBoth();
    const auto program = game();
    const auto sounds = program->play({});
    ASSERT_TRUE(waitToRead("app:Game", 1));
    ASSERT_TRUE(controller_->setMute(Mute::On, "app:Game"));
    ASSERT_TRUE(waitForMute(*sounds, Mute::On));
    ASSERT_TRUE(waitUntilWritten());
    runFor(0.4);  // The stream is no new one any more.
    server_->pactl({"set-sink-input-mute", sounds->index(), "0"});
    ASSERT_TRUE(waitForVolume("app:Game", 1));
    const auto later = program->play({.role = "music"});
    runFor(0.3);
    EXPECT_FALSE(later->isMuted());
}

TEST_P(PulseMuting, SilencesWhatRingsAndWhatWillRing) {
    startBoth();
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Ringtone"));
    ASSERT_TRUE(waitUntilWritten());
    const auto program = game();
    const auto ringing = program->play({.role = "event"});
    ASSERT_TRUE(waitForStream(*ringing, {32768, 32768}));
    ASSERT_TRUE(waitToRead("Ringtone", 0.5F));
    ASSERT_TRUE(controller_->setMute(Mute::On, "Ringtone"));
    EXPECT_TRUE(waitForMute(*ringing, Mute::On));
    EXPECT_TRUE(waitForVolume("Ringtone", 0));
    ASSERT_TRUE(waitUntilWritten());
    runFor(0.3);
    EXPECT_EQ(controller_->levelOf("Ringtone"), (Level{0.5F, Mute::On}));
    const auto next = program->play({.role = "event"});
    EXPECT_TRUE(waitForStream(*next, {32768, 32768}));
    EXPECT_TRUE(waitForMute(*next, Mute::On));
    ASSERT_TRUE(controller_->setMute(Mute::Off, "Ringtone"));
    EXPECT_TRUE(waitForMute(*ringing, Mute::Off));
    EXPECT_TRUE(waitForMute(*next, Mute::Off));
    EXPECT_TRUE(waitForVolume("Ringtone", 0.5F));
    EXPECT_EQ(next->volumes(), (Channels{32768, 32768}));
}

TEST_P(PulseMuting, OfARoleIsTheServersAndOutlivesTheMixer) {
    startBoth();
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Ringtone"));
    ASSERT_TRUE(waitUntilWritten());
    ASSERT_TRUE(controller_->setMute(Mute::On, "Ringtone"));
    ASSERT_TRUE(waitUntilWritten());
    controller_.reset();
    startControllerAndWait();
    EXPECT_TRUE(waitForLevel("Ringtone", {0.5F, Mute::On}));
    const auto ringing = play("event", {32768, 32768});
    EXPECT_TRUE(waitForMute(*ringing, Mute::On));
    ASSERT_TRUE(controller_->setMute(Mute::Off, "Ringtone"));
    EXPECT_TRUE(waitForMute(*ringing, Mute::Off));
    EXPECT_TRUE(waitToRead("Ringtone", 0.5F));
}

TEST_P(PulseMuting, OfARoleOutlivesTheServer) {
    startBoth();
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Ringtone"));
    ASSERT_TRUE(controller_->setMute(Mute::On, "Ringtone"));
    ASSERT_TRUE(waitUntilWritten());
    constexpr double writesWhatItKeepsAfter = 1.5;  // seconds, of one of the servers
    runFor(isPipeWire() ? writesWhatItKeepsAfter : 0);
    server_->stop(SIGTERM);
    ASSERT_TRUE(waitUntil([&] { return isUnavailable(); }));
    controller_.reset();
    server_->startAndWait();
    startControllerAndWait();
    EXPECT_TRUE(waitForLevel("Ringtone", {0.5F, Mute::On}));
}
