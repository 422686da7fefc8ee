#include "tests/pulse/ServiceFixture.hpp"

// The ringtone: what the server remembers for event sounds, and the streams that sound as such.

class PulseRinging : public OnBothServers {
 protected:
    std::unique_ptr<rigs::PlayingStream> play(const std::string& role) {
        program_ = std::make_unique<rigs::OtherProgram>(server_->address());
        return program_->play({.role = role});
    }

 private:
    std::unique_ptr<rigs::OtherProgram> program_;
};
INSTANTIATE_TEST_SUITE_P(On, PulseRinging, bothServers, serverName);

TEST_P(PulseRinging, MovesAStreamThatRingsInBothChannels) {
    startBoth();
    const auto ringing = play("event");
    ASSERT_TRUE(waitForStream(*ringing, Channels{65536, 65536}));
    ASSERT_TRUE(controller_->setVolumeTo(0.376F, "Ringtone"));
    EXPECT_TRUE(waitForStream(*ringing, Channels{24642, 24642}));
    EXPECT_TRUE(waitForVolume("Ringtone", 24642.0F / 65536));
    EXPECT_EQ(server_->sinkVolumes("spk"), (Channels{65536, 65536}));
}

TEST_P(PulseRinging, MovesTheNextStreamThatRings) {
    startBoth();
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Ringtone"));
    ASSERT_TRUE(waitForVolume("Ringtone", 0.25F));
    const auto ringing = play("event");
    EXPECT_TRUE(waitForStream(*ringing, Channels{16384, 16384}));
}

TEST_P(PulseRinging, LeavesAStreamOfAnotherRoleAlone) {
    startBoth();
    const auto music = play("music");
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Ringtone"));
    ASSERT_TRUE(waitForVolume("Ringtone", 0.25F));
    EXPECT_EQ(music->volumes(), (Channels{65536, 65536}));
}

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
    auto other = std::make_shared<PulseAudioController>(server_->address());
    ASSERT_TRUE(waitUntil([&] { return other->state() == PulseAudioController::State::Ready; }));
    ASSERT_TRUE(other->setVolumeTo(0.376F, "Ringtone"));
    EXPECT_TRUE(waitForVolume("Ringtone", 24642.0F / 65536));
    EXPECT_EQ(volumeOf("Audio/Video"), 1);
}
