#include "tests/pulse/ServiceFixture.hpp"

using Mute = AVSystemController::Mute;

// What the service does to the server when a slider is moved, seen by other clients.

class PulseMoving : public OnBothServers {};
INSTANTIATE_TEST_SUITE_P(On, PulseMoving, bothServers, serverName);

TEST_P(PulseMoving, MovesToEveryPlaceOfTheScale) {
    startBoth();
    const std::pair<float, unsigned> places[] = {
        {0.0F, 0}, {1.0F / 65536, 1}, {0.005F, 328}, {0.376F, 24642}, {1.5F, 65536}};
    for (const auto& [fraction, raw] : places) {
        ASSERT_TRUE(controller_->setVolumeTo(fraction, "Audio/Video"));
        EXPECT_TRUE(waitForSink("spk", {raw, raw})) << fraction;
        EXPECT_TRUE(waitForVolume("Audio/Video", static_cast<float>(raw) / 65536)) << fraction;
    }
    EXPECT_EQ(server_->sinkVolumes("hp"), (Channels{65536, 65536})) << "the other device";
}

TEST_P(PulseMoving, BringsAnAmplifiedDeviceDownToFullWhenTheUserMovesIt) {
    server_->startAndWait();
    server_->pactl({"set-sink-volume", "spk", "98304"});
    startControllerAndWait();
    ASSERT_EQ(volumeOf("Audio/Video"), 1);
    ASSERT_TRUE(controller_->setVolumeTo(1, "Audio/Video"));
    EXPECT_TRUE(waitForSink("spk", {65536, 65536}));
}

TEST_P(PulseMoving, KeepsTheBalanceThroughSilence) {
    startBoth();
    server_->pactl({"set-sink-volume", "spk", "40000", "20000"});
    ASSERT_TRUE(waitForVolume("Audio/Video", 40000.0F / 65536));
    controller_->setVolumeTo(0, "Audio/Video");
    ASSERT_TRUE(waitForSink("spk", {0, 0}));
    ASSERT_TRUE(waitForVolume("Audio/Video", 0));
    controller_->setVolumeTo(0.25F, "Audio/Video");
    EXPECT_TRUE(waitForSink("spk", {16384, 8192}));
}

TEST_P(PulseMoving, SendsOnlyTheNewestOfAThousandSetsInOneGo) {
    startBoth();
    posted_.clear();
    for (int i = 1000; i >= 1; --i)
        ASSERT_TRUE(controller_->setVolumeTo(static_cast<float>(i) / 1000, "Audio/Video"));
    EXPECT_TRUE(waitForSink("spk", {66, 66}));
    ASSERT_TRUE(waitForVolume("Audio/Video", 66.0F / 65536));
    runFor(0.3);
    EXPECT_EQ(volumesPosted("Audio/Video").size(), 1U);
}

TEST_P(PulseMoving, NeverGoesBackwardsInADragOfAThousandSets) {
    startBoth();
    controller_->setVolumeTo(0, "Audio/Video");
    ASSERT_TRUE(waitForVolume("Audio/Video", 0));
    posted_.clear();
    for (int i = 1; i <= 1000; ++i) {
        const float wanted = static_cast<float>(i * 64) / 65536;
        ASSERT_TRUE(controller_->setVolumeTo(wanted, "Audio/Video"));
        runFor(0.001);
        ASSERT_EQ(volumeOf("Audio/Video"), wanted);
    }
    EXPECT_TRUE(waitForSink("spk", {64000, 64000}));
    ASSERT_TRUE(waitForVolume("Audio/Video", 64000.0F / 65536));
    runFor(0.3);
    const std::vector<float> told = volumesPosted("Audio/Video");
    EXPECT_GT(told.size(), 5U);
    for (std::size_t i = 1; i < told.size(); ++i)
        EXPECT_GT(told[i], told[i - 1]);
}

TEST_P(PulseMoving, ShowsWhatSomeoneElseSetRightAfterADrag) {
    startBoth();
    for (int i = 0; i < 100; ++i)
        controller_->setVolumeTo(0.9F, "Audio/Video");
    ASSERT_TRUE(waitForSink("spk", {58982, 58982}));
    server_->pactl({"set-sink-volume", "spk", "16384"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.25F));
}

TEST_P(PulseMoving, SurvivesADeviceThatGoesWhileItIsMoved) {
    server_->startAndWait();
    const std::string module = server_->loadSink("new");
    server_->pactl({"set-default-sink", "new"});
    server_->pactl({"set-sink-volume", "new", "16384"});
    startControllerAndWait();
    ASSERT_TRUE(waitForVolume("Audio/Video", 0.25F));
    server_->pactl({"unload-module", module});  // The service has not heard of it yet.
    for (int i = 0; i < 10; ++i)
        controller_->setVolumeTo(0.5F, "Audio/Video");
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
    EXPECT_EQ(server_->sinkVolumes("spk"), (Channels{65536, 65536}));
    EXPECT_TRUE(isReady());
}

TEST_P(PulseMoving, MovesTheNewDefaultDeviceAfterAChangeInADrag) {
    startBoth();
    controller_->setVolumeTo(0.5F, "Audio/Video");
    server_->pactl({"set-default-sink", "hp"});
    ASSERT_TRUE(
        waitUntil([&] { return controller_->routeForCategory("Audio/Video") == "Headphones"; }));
    controller_->setVolumeTo(0.25F, "Audio/Video");
    EXPECT_TRUE(waitForSink("hp", {16384, 16384}));
    EXPECT_TRUE(waitForSink("spk", {32768, 32768}));
}

// Sets in one go, the last of them what the server believes to have: one drops it then.
TEST_P(PulseMoving, EndsOnTheLastOfThreeSetsInOneGo) {
    startBoth();
    for (int i = 0; i < 20; ++i) {
        for (const float volume : {0.75F, 0.25F, 0.75F})
            controller_->setVolumeTo(volume, "Audio/Video");
        ASSERT_TRUE(waitForSink("spk", {49152, 49152})) << i;
        ASSERT_TRUE(waitToRead("Audio/Video", 0.75F)) << i;
        for (const float volume : {0.25F, 0.75F, 0.25F})
            controller_->setVolumeTo(volume, "Audio/Video");
        ASSERT_TRUE(waitForSink("spk", {16384, 16384})) << i;
        ASSERT_TRUE(waitToRead("Audio/Video", 0.25F)) << i;
    }
}

TEST_P(PulseMoving, EndsOnTheLastSetHoweverSoonItFollows) {
    startBoth();
    for (int i = 0; i < 40; ++i) {
        controller_->setVolumeTo(0.75F, "Audio/Video");
        runFor(0.0001 * i);
        controller_->setVolumeTo(0.25F, "Audio/Video");
        ASSERT_TRUE(waitForSink("spk", {16384, 16384})) << i;
        ASSERT_TRUE(waitToRead("Audio/Video", 0.25F)) << i;
    }
}

// Newer PipeWires say nothing of what such a device is given, to anybody, until it runs.
class PulseMovingADeviceThatHasNeverRun : public OnPipeWire {
 protected:
    void SetUp() override {
        server_->setSinks({{"spk", {{"node.always-process", "false"}}}});
        startBoth();
        ASSERT_EQ(volumeOf("Audio/Video"), 1);
        posted_.clear();
    }
    bool isMuted(const std::string& answer) {
        return waitUntil([&] {
            return server_->pactl({"get-sink-mute", "spk"}) == "Mute: " + answer + "\n";
        });
    }
};

TEST_F(PulseMovingADeviceThatHasNeverRun, IsSeenByEverybodyAndShowsNothingElse) {
    for (const float volume : {0.25F, 0.5F}) {
        ASSERT_TRUE(controller_->setVolumeTo(volume, "Audio/Video"));
        ASSERT_TRUE(waitForVolume("Audio/Video", volume));
        const auto raw = static_cast<unsigned>(volume * 65536);
        EXPECT_TRUE(waitForSink("spk", {raw, raw}));
    }
    runFor(0.6);
    EXPECT_EQ(volumesPosted("Audio/Video"), (std::vector<float>{0.25F, 0.5F}));
}

TEST_F(PulseMovingADeviceThatHasNeverRun, MutesAndUnmutesIt) {
    ASSERT_TRUE(controller_->setMute(Mute::On, "Audio/Video"));
    EXPECT_TRUE(isMuted("yes"));
    EXPECT_TRUE(waitForVolume("Audio/Video", 0));
    ASSERT_TRUE(controller_->setMute(Mute::Off, "Audio/Video"));
    EXPECT_TRUE(isMuted("no"));
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
}

TEST_F(PulseMovingADeviceThatHasNeverRun, FollowsChangesByOtherProgramsAfterwards) {
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Audio/Video"));
    ASSERT_TRUE(waitForSink("spk", {16384, 16384}));
    runFor(0.1);  // The server loses what comes at the moment when a device begins or ends to run.
    server_->pactl({"set-sink-volume", "spk", "32768"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.5F));
}
