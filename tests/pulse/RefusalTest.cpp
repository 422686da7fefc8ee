#include "tests/pulse/LiveMixer.hpp"
#include "tests/pulse/ServiceFixture.hpp"

// A server that lets this client look and change nothing.

using Mute = AVSystemController::Mute;
using Level = AVSystemController::Level;

class PulseRefusal : public OnPipeWire {
 protected:
    void SetUp() override {
        server_->startAndWait();
        server_->pactl({"set-sink-volume", "spk", "32768"});
        controller_ = pulse::connectToServer(pipeWire().lookersAddress());
        controller_->setRefusalHandler([this](const std::string& what, const std::string& why) {
            refusals_.push_back(what + ": " + why);
        });
        ASSERT_TRUE(waitUntil([&] { return isReady(); }));
        ASSERT_TRUE(waitToRead("Audio/Video", 0.5F));
    }
    bool waitForRefusals(const std::vector<std::string>& wanted) {
        return waitUntil([&] { return refusals_ == wanted && !controller_->isWriting(); });
    }

    std::vector<std::string> refusals_;
};

TEST_F(PulseRefusal, IsToldInTheServersWordsAndTheVolumeIsWhatItWas) {
    ASSERT_TRUE(controller_->setVolumeTo(0.9F, "Audio/Video"));
    EXPECT_TRUE(waitForRefusals({"sink:spk: Access denied"}));
    EXPECT_EQ(volumeOf("Audio/Video"), 0.5F);
    EXPECT_EQ(server_->sinkVolumes("spk"), (Channels{32768, 32768}));
    ASSERT_TRUE(controller_->setMute(Mute::On, "sink:hp"));
    EXPECT_TRUE(waitForRefusals({"sink:spk: Access denied", "sink:hp: Access denied"}));
    EXPECT_EQ(controller_->levelOf("sink:hp"), (Level{1, Mute::Off}));
}

TEST_F(PulseRefusal, IsSaidWhereTheSoundIsDebugged) {
    setenv("TARNWICK_DEBUG", "sound", 1);
    testing::internal::CaptureStderr();
    controller_->setVolumeTo(0.9F, "Audio/Video");
    EXPECT_TRUE(waitForRefusals({"sink:spk: Access denied"}));
    unsetenv("TARNWICK_DEBUG");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "sound: the server refuses to change 'sink:spk': Access denied\n");
}

TEST_F(PulseRefusal, IsToldOnceForAWholeDrag) {
    for (int i = 0; i < 20; ++i) {
        controller_->setVolumeTo(static_cast<float>(i) / 20, "Audio/Video");
        runFor(0.005);
    }
    EXPECT_TRUE(waitForRefusals({"sink:spk: Access denied"}));
    runFor(0.1);
    EXPECT_EQ(refusals_.size(), 1U);
}

// Sooner than what settles is told, so that nothing but the set says that somebody shows it.
TEST_F(PulseRefusal, IsFollowedByTheVolumeAsItIs) {
    ASSERT_TRUE(waitToRead("sink:spk", 0.5F));
    for (int i = 0; i < 20; ++i) {
        posted_.clear();
        ASSERT_TRUE(controller_->setVolumeTo(0.9F, "sink:spk"));
        ASSERT_TRUE(waitUntil([&] { return !controller_->isWriting(); }));
        ASSERT_TRUE(waitUntil([&] {
            const Posted* last = lastPosted("sink:spk");
            return last && last->volume == 0.5F;
        })) << i;
        runFor(0.02);
    }
}

TEST_F(PulseRefusal, TakesTheRowBack) {
    LiveMixer mixer(controller_, {"sink:spk"});
    ASSERT_EQ(mixer.sliderValue(0), 50);
    mixer.press(0);
    mixer.dragTo(0, 0.9);
    mixer.lift();
    EXPECT_GT(mixer.sliderValue(0), 80) << "it follows the hand";
    EXPECT_TRUE(waitUntil([&] { return mixer.sliderValue(0) == 50; }));
    EXPECT_EQ(mixer.caption(0), "sink:spk: 50%");
}

TEST_F(PulseRefusal, OfWhatIsKeptForARoleIsSeenByItsNotBeingKept) {
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Ringtone"));
    EXPECT_TRUE(waitForRefusals({"role:event: the server has not kept it"}));
    EXPECT_EQ(volumeOf("Ringtone"), 1);
}
