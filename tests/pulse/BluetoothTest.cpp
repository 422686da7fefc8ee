#include "tests/pulse/LiveMixer.hpp"
#include "tests/pulse/ServiceFixture.hpp"
#include "tests/rigs/FakeHeadset.hpp"

#include <cmath>

// A Bluetooth headset: one category while it plays music, another while it takes a call.

using rigs::FakeHeadset;
using Profile = FakeHeadset::Profile;

class PulseBluetooth : public OnBothServers {
 protected:
    PulseBluetooth() : headset_(*server_) { server_->startAndWait(); }
    void connectAndShow() {
        headset_.connect();
        startControllerAndWait();
        ASSERT_TRUE(waitForItsVolume()) << volumeOf("HeadphonesBT");
    }
    /// One server takes it a fifth of a second after the connection, over what is set before.
    bool waitForItsVolume() {
        return waitUntil([&] { return isAt("HeadphonesBT", headset_.itsVolume()); });
    }
    /// Whether the category shows what the headset has, within a step of its scale.
    bool isAt(const std::string& category, int itsVolume) {
        constexpr float steps = 127;
        return std::abs(volumeOf(category) * steps - static_cast<float>(itsVolume)) < 1;
    }
    /// Also right after the mixer has set it right.
    bool waitForItToBeMovedByAnotherMixer() {
        constexpr int halfOfItsSteps = 64;
        server_->pactl({"set-sink-volume", headset_.sinkName(), "50%"});
        return waitUntil([&] { return isAt("HeadphonesBT", halfOfItsSteps); });
    }
    bool waitUntilUnreadable(const std::string& category) {
        return waitUntil([&] { return volumeOf(category) == unreadable; });
    }
    bool waitUntilReadable(const std::string& category) {
        return waitUntil([&] { return volumeOf(category) != unreadable; });
    }

    FakeHeadset headset_;
};
INSTANTIATE_TEST_SUITE_P(On, PulseBluetooth, bothServers, serverName);

TEST_P(PulseBluetooth, CannotBeReadUntilItConnects) {
    startControllerAndWait();
    EXPECT_EQ(volumeOf("HeadphonesBT"), unreadable);
    EXPECT_EQ(volumeOf("HeadsetBT"), unreadable);
    headset_.connect();
    EXPECT_TRUE(waitUntilReadable("HeadphonesBT"));
    EXPECT_EQ(volumeOf("HeadsetBT"), unreadable);
    headset_.disconnect();
    EXPECT_TRUE(waitUntilUnreadable("HeadphonesBT"));
}

// One server takes the headset's own volume a fifth of a second after the connection.
TEST_P(PulseBluetooth, KeepsWhatTheUserSetsWhileItComes) {
    startControllerAndWait();
    headset_.connect();
    ASSERT_TRUE(waitUntilReadable("HeadphonesBT"));
    ASSERT_TRUE(controller_->setVolumeTo(0.75F, "HeadphonesBT"));
    constexpr double itHasComeSeconds = 0.8;
    runFor(itHasComeSeconds);
    constexpr int threeQuartersOfItsSteps = 95;
    EXPECT_TRUE(isAt("HeadphonesBT", threeQuartersOfItsSteps)) << volumeOf("HeadphonesBT");
    EXPECT_TRUE(waitForItToBeMovedByAnotherMixer());
}

TEST_P(PulseBluetooth, ChangesItsCategoryWithItsProfileAndBack) {
    connectAndShow();
    for (int i = 0; i < 2; ++i) {
        headset_.choose(Profile::HandsFree);
        EXPECT_TRUE(waitUntilReadable("HeadsetBT"));
        EXPECT_TRUE(waitUntilUnreadable("HeadphonesBT"));
        headset_.choose(Profile::Music);
        EXPECT_TRUE(waitUntilReadable("HeadphonesBT"));
        EXPECT_TRUE(waitUntilUnreadable("HeadsetBT"));
    }
}

TEST_P(PulseBluetooth, IsMovedToTheVolumeThatTheHeadsetItselfHears) {
    connectAndShow();
    rigs::OtherProgram program(server_->address());
    const auto music = program.play({.role = "music", .sink = headset_.sinkName()});
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "HeadphonesBT"));
    EXPECT_TRUE(waitUntil([&] { return std::abs(headset_.itsVolume() - 64) <= 1; }))
        << headset_.itsVolume();
    EXPECT_TRUE(waitForSink(headset_.sinkName(), {32768, 32768}));
}

TEST_P(PulseBluetooth, FollowsTheButtonsOnTheHeadset) {
    connectAndShow();
    // The scale has 128 steps.
    for (const int volume : {32, 127, 0, 64}) {
        headset_.setItsVolume(volume);
        EXPECT_TRUE(waitUntil([&] { return isAt("HeadphonesBT", volume); }))
            << volume << ": " << volumeOf("HeadphonesBT");
    }
}

TEST_P(PulseBluetooth, FollowsAndMovesTheGainOfCalls) {
    connectAndShow();
    headset_.choose(Profile::HandsFree);
    ASSERT_TRUE(waitUntilReadable("HeadsetBT"));
    for (const int gain : {3, 15, 9}) {
        headset_.setItsGain(gain);
        EXPECT_TRUE(waitUntil([&] {
            return std::abs(volumeOf("HeadsetBT") - static_cast<float>(gain) / 15) < 0.04F;
        })) << gain
            << ": " << volumeOf("HeadsetBT");
    }
    ASSERT_TRUE(controller_->setVolumeTo(1, "HeadsetBT"));
    EXPECT_TRUE(waitUntil([&] { return headset_.itsGain() == 15; })) << headset_.itsGain();
}

TEST_P(PulseBluetooth, MovesWithMediaWhileItIsTheDefaultDevice) {
    connectAndShow();
    server_->pactl({"set-default-sink", headset_.sinkName()});
    ASSERT_TRUE(waitForRoute("Audio/Video", "HeadphonesBT"));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Audio/Video"));
    EXPECT_TRUE(waitForVolume("HeadphonesBT", 0.25F));
    // The headset repeats every volume that it is given, and the server takes a repetition of the
    // one before for a press of the headset's buttons: back to it, and then on to the newest in the
    // headset's own steps.
    runFor(0.2);
    ASSERT_TRUE(controller_->setVolumeTo(0.75F, "HeadphonesBT"));
    EXPECT_TRUE(waitUntil([&] { return isAt("Audio/Video", 95); })) << volumeOf("Audio/Video");
}

TEST_P(PulseBluetooth, FillsAndEmptiesItsRowsAtOnce) {
    startControllerAndWait();
    LiveMixer mixer(controller_, {"HeadphonesBT", "HeadsetBT"});
    controller_->setAvailabilityHandler([&] { mixer.updateValues(); });
    EXPECT_EQ(mixer.caption(0), "HeadphonesBT: unknown");
    headset_.connect();
    ASSERT_TRUE(waitForItsVolume()) << volumeOf("HeadphonesBT");
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "HeadphonesBT"));
    EXPECT_TRUE(waitUntil([&] { return mixer.caption(0) == "HeadphonesBT: 50%"; }))
        << mixer.caption(0);
    EXPECT_EQ(mixer.caption(1), "HeadsetBT: unknown");
    headset_.disconnect();
    EXPECT_TRUE(waitUntil([&] { return mixer.caption(0) == "HeadphonesBT: unknown"; }))
        << mixer.caption(0);
}

// One server has every new Bluetooth device at full for a moment. The headset's own is less than
// half, and so is what the other gives it before.
TEST_P(PulseBluetooth, IsNeverToldAtFullBeforeItsOwnVolume) {
    startControllerAndWait();
    headset_.connect();
    ASSERT_TRUE(waitUntilReadable("HeadphonesBT"));
    runFor(0.2);
    ASSERT_FALSE(volumesPosted("HeadphonesBT").empty());
    for (const float volume : volumesPosted("HeadphonesBT"))
        EXPECT_LT(volume, 0.5F);
}

// One server says of it that it is intended for calls, which other devices for a role say too.
TEST_P(PulseBluetooth, IsNoDeviceOfARoleForCalls) {
    connectAndShow();
    const float before = volumeOf("HeadphonesBT");
    ASSERT_TRUE(controller_->setVolumeTo(0.875F, "PhoneCall"));
    ASSERT_TRUE(waitToRead("PhoneCall", 0.875F));
    runFor(0.1);
    EXPECT_EQ(volumeOf("HeadphonesBT"), before);
}
