#include "tests/pulse/ServiceFixture.hpp"

#include <csignal>
#include <filesystem>

// The ringtone: what the server remembers for event sounds, and the streams that sound as such.

class PulseRinging : public OnBothServers {};
INSTANTIATE_TEST_SUITE_P(On, PulseRinging, bothServers, serverName);

TEST_P(PulseRinging, FollowsAndUnmutesAStreamThatRings) {
    startBoth();
    const auto ringing = play("event");
    server_->pactl({"set-sink-input-volume", ringing->index(), "16384"});
    EXPECT_TRUE(waitForVolume("Ringtone", 0.25F));
    server_->pactl({"set-sink-input-mute", ringing->index(), "1"});
    EXPECT_TRUE(waitForVolume("Ringtone", 0));
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Ringtone"));
    EXPECT_TRUE(waitUntil([&] { return !ringing->isMuted(); }));
    EXPECT_EQ(ringing->volumes(), (Channels{32768, 32768}));
}

TEST_P(PulseRinging, FollowsWhatAnotherProgramSetsForTheNextSound) {
    startBoth();
    auto other = pulse::connectToServer(server_->address());
    ASSERT_TRUE(waitUntil([&] { return other->state() == SoundServer::State::Ready; }));
    ASSERT_TRUE(other->setVolumeTo(0.376F, "Ringtone"));
    EXPECT_TRUE(waitForVolume("Ringtone", 24642.0F / 65536));
    EXPECT_EQ(volumeOf("Audio/Video"), 1);
}

// One server keeps for the next sound what was last written there, and not what a mixer made of the
// one that rings.
TEST_P(PulseRinging, StaysWhereSomebodyElseMovedAStreamThatHasEnded) {
    startBoth();
    ASSERT_TRUE(waitToRead("Ringtone", 1));
    auto ringing = play("event");
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Ringtone"));
    ASSERT_TRUE(waitForStream(*ringing, {16384, 16384}));
    runFor(0.5);
    server_->pactl({"set-sink-input-volume", ringing->index(), "49152"});
    ASSERT_TRUE(waitForVolume("Ringtone", 0.75F));
    ringing.reset();
    runFor(0.6);
    EXPECT_EQ(volumeOf("Ringtone"), 0.75F);
    play("event", {49152, 49152});
    program_->writeRoleEntry("event", {32768, 32768});
    runFor(0.6);
    EXPECT_NEAR(volumeOf("Ringtone"), 0.5F, volumeTolerance);
}

TEST_P(PulseRinging, StaysThereAlsoWhereTheUserNeverMovedIt) {
    startBoth();
    ASSERT_TRUE(waitToRead("Ringtone", 1));
    auto ringing = play("event");
    runFor(0.5);
    server_->pactl({"set-sink-input-volume", ringing->index(), "49152"});
    ASSERT_TRUE(waitForVolume("Ringtone", 0.75F));
    ringing.reset();
    runFor(0.6);
    EXPECT_EQ(volumeOf("Ringtone"), 0.75F);
}

// What was set is shown, although one server goes on answering the old value for a while.
TEST_P(PulseRinging, ShowsNothingButWhatWasSet) {
    startBoth();
    posted_.clear();
    for (const float volume : {0.25F, 0.75F, 0.5F}) {
        ASSERT_TRUE(controller_->setVolumeTo(volume, "Ringtone"));
        ASSERT_TRUE(waitForVolume("Ringtone", volume));
        runFor(0.4);
        EXPECT_EQ(volumeOf("Ringtone"), volume);
    }
    EXPECT_EQ(volumesPosted("Ringtone"), (std::vector<float>{0.25F, 0.75F, 0.5F}));
}

// One server keeps six decimals of the volume's cube: half a percent comes to nothing there.
TEST_P(PulseRinging, GivesEvenTheSmallestVolumeToTheNextStream) {
    startBoth();
    ASSERT_TRUE(controller_->setVolumeTo(0.005F, "Ringtone"));
    ASSERT_TRUE(waitForVolume("Ringtone", 328.0F / 65536));
    const auto ringing = play("event", {328, 328});
    EXPECT_NEAR(volumeOf("Ringtone"), 328.0F / 65536, volumeTolerance);
}

// Of a mono entry, one server silences the right channel of what is played in stereo.
TEST_P(PulseRinging, MakesAnEntryThatSomebodyWroteInMonoHeardInBothChannels) {
    server_->startAndWait();
    rigs::OtherProgram other(server_->address());
    other.writeRoleEntry("event", {49152});
    startControllerAndWait();
    ASSERT_TRUE(waitToRead("Ringtone", 0.75F));
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Ringtone"));
    const auto ear = other.record("spk.monitor");
    const auto ringing = other.play({.role = "event", .level = 0.5F});
    EXPECT_TRUE(waitForStream(*ringing, {32768, 32768}));
    EXPECT_TRUE(waitUntil([&] { return ear->left() > 0.01F && ear->right() > 0.01F; }));
}

TEST_P(PulseRinging, OutlivesTheServer) {
    startBoth();
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Ringtone"));
    ASSERT_TRUE(waitForVolume("Ringtone", 0.25F));
    // One server writes what it keeps a second later.
    const auto kept = folder_.path() / rigs::wirePlumberStreamStateFile();
    ASSERT_TRUE(waitUntil([&] { return !isPipeWire() || std::filesystem::exists(kept); }));
    server_->stop(SIGTERM);
    ASSERT_TRUE(waitUntil([&] { return isUnavailable(); }));
    server_->startAndWait();
    EXPECT_TRUE(waitToRead("Ringtone", 0.25F));
}
