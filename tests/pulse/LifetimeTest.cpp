#include "tests/pulse/ServiceFixture.hpp"

#include <glib.h>

#include <csignal>
#include <filesystem>

// The service's end, in every state and from inside everything that it calls. The sanitizers watch.

using State = SoundServer::State;

class PulseLifetime : public OnBothServers {
 protected:
    void watch() {
        controller_->setStateHandler([this](State) { ++calls_; });
        controller_->setAvailabilityHandler([this] { ++calls_; });
    }
    /// Ends it and lets everything come that could still come.
    void endAndExpectSilence() {
        controller_.reset();
        calls_ = 0;
        posted_.clear();
        runFor(0.1);
        EXPECT_EQ(calls_, 0);
        EXPECT_TRUE(posted_.empty());
    }

    int calls_ = 0;
};
INSTANTIATE_TEST_SUITE_P(On, PulseLifetime, bothServers, serverName);

TEST_P(PulseLifetime, EndsBeforeItsFirstTurn) {
    server_->start();
    startController();
    watch();
    endAndExpectSilence();
}

TEST_P(PulseLifetime, EndsAfterAnyNumberOfTurnsOfConnectingAndReading) {
    server_->start();
    startController();
    ASSERT_TRUE(waitUntil([&] { return isReady(); }));
    for (int turns = 1; turns <= 40; ++turns) {
        startController();
        watch();
        int left = turns;
        ASSERT_TRUE(waitUntil([&] { return left-- == 0; }));
        controller_->setVolumeTo(0.5F, "Audio/Video");
        controller_->setVolumeTo(0.25F, "Ringtone");
        controller_.reset();
        calls_ = 0;
        posted_.clear();
        for (int i = 0; i < 5; ++i)
            g_main_context_iteration(nullptr, FALSE);
        EXPECT_EQ(calls_, 0);
    }
    posted_.clear();
    runFor(0.1);
    EXPECT_TRUE(posted_.empty());
}

TEST_P(PulseLifetime, EndsInTheMiddleOfSetsAndReads) {
    startBoth();
    watch();
    server_->pactl({"set-sink-volume", "spk", "16384"});
    for (int i = 0; i < 100; ++i) {
        controller_->setVolumeTo(0.5F, "Audio/Video");
        controller_->setVolumeTo(0.5F, "Ringtone");
    }
    endAndExpectSilence();
}

TEST_P(PulseLifetime, EndsWithAnAnnouncementOnItsWay) {
    startBoth();
    posted_.clear();
    server_->pactl({"set-sink-volume", "spk", "16384"});
    ASSERT_TRUE(waitUntil([&] { return volumeOf("Audio/Video") == 0.25F; }));
    endAndExpectSilence();
}

TEST_P(PulseLifetime, EndsBetweenAttempts) {
    startController();
    ASSERT_TRUE(waitUntil([&] { return isUnavailable(); }));
    watch();
    endAndExpectSilence();
}

TEST_P(PulseLifetime, EndsAfterItsServer) {
    startBoth();
    watch();
    server_->stop(SIGKILL);
    endAndExpectSilence();
}

TEST_P(PulseLifetime, EndsWhileItsServerHangs) {
    startBoth();
    watch();
    server_->suspend();
    controller_->setVolumeTo(0.5F, "Audio/Video");
    runFor(0.05);
    endAndExpectSilence();
}

TEST_P(PulseLifetime, EndsWhileItConnectsToAServerThatHangs) {
    server_->start();
    ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(folder_.socket()); }));
    server_->suspend();
    startController();
    watch();
    runFor(0.05);
    endAndExpectSilence();
}

TEST_P(PulseLifetime, MayBeEndedByItsStateHandler) {
    for (const State end : {State::Unavailable, State::Ready}) {
        if (end == State::Ready) server_->start();
        startController();
        controller_->setStateHandler([&](State state) {
            if (state != end) return;
            controller_.reset();
            ++calls_;
        });
        ASSERT_TRUE(waitUntil([&] { return !controller_; }));
        runFor(0.05);
    }
    EXPECT_EQ(calls_, 2);
    EXPECT_TRUE(posted_.empty());
}

TEST_P(PulseLifetime, MayBeEndedByItsAvailabilityHandler) {
    startBoth();
    controller_->setAvailabilityHandler([&] {
        controller_.reset();
        ++calls_;
    });
    server_->stop(SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return !controller_; }));
    runFor(0.05);
    EXPECT_EQ(calls_, 1);
}

TEST_P(PulseLifetime, MayBeEndedByAnObserverOfItsNotification) {
    server_->start();
    startController();
    auto ending = std::make_shared<NSObject>();
    NSNotificationCenter::defaultCenter().add(
        ending, [this](const NSNotification&) { controller_.reset(); },
        AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
    ASSERT_TRUE(waitUntil([&] { return !controller_; }));
    runFor(0.05);
    EXPECT_EQ(posted_.size(), 1U);
    NSNotificationCenter::defaultCenter().removeObserver(ending.get());
}

TEST_P(PulseLifetime, LivesBesideAnother) {
    startBoth();
    auto other = pulse::connectToServer(server_->address());
    ASSERT_TRUE(waitUntil([&] { return other->state() == State::Ready; }));
    other->setVolumeTo(0.5F, "Audio/Video");
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.5F));
    other.reset();
    controller_->setVolumeTo(0.25F, "Audio/Video");
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.25F));
}
