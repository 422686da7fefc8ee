#include "tests/pulse/ServiceFixture.hpp"

// What the service reads and follows when it is changed elsewhere.

class PulseFollowing : public OnBothServers {
 protected:
    /// The device without sound that stands in until a real one comes.
    bool hasPlaceholder() {
        try {
            return server_->pactl({"get-default-sink"}) == "auto_null\n";
        } catch (const std::runtime_error&) {
            return false;
        }
    }
};
INSTANTIATE_TEST_SUITE_P(On, PulseFollowing, bothServers, serverName);

class PulseAudioFollowing : public OnPulseAudio {};

TEST_P(PulseFollowing, ReadsTheDefaultDeviceAndAnnouncesItAtTheStart) {
    server_->startAndWait();
    server_->pactl({"set-sink-volume", "spk", "24642"});
    startControllerAndWait();
    EXPECT_TRUE(waitForVolume("Audio/Video", 24642.0F / 65536));
    EXPECT_TRUE(waitForVolume("Ringtone", 1));
    EXPECT_EQ(volumesPosted("Audio/Video").size(), 1U);
    EXPECT_EQ(volumesPosted("Ringtone").size(), 1U);
    EXPECT_TRUE(waitForVolume("PhoneCall", 1));
}

TEST_P(PulseFollowing, FollowsAVolumeSetElsewhere) {
    startBoth();
    server_->pactl({"set-sink-volume", "spk", "40%"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.4F));
}

TEST_P(PulseFollowing, ShowsTheLoudestChannel) {
    startBoth();
    server_->pactl({"set-sink-volume", "spk", "16384", "49152"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.75F));
}

TEST_P(PulseFollowing, ShowsAMutedDeviceAsSilentAndComesBackUnmuted) {
    startBoth();
    server_->pactl({"set-sink-volume", "spk", "40%"});
    ASSERT_TRUE(waitForVolume("Audio/Video", 0.4F));
    server_->pactl({"set-sink-mute", "spk", "1"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0));
    server_->pactl({"set-sink-mute", "spk", "0"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.4F));
}

TEST_P(PulseFollowing, ShowsAnAmplifiedDeviceAsFullAndLeavesItSo) {
    server_->startAndWait();
    server_->pactl({"set-sink-volume", "spk", "32768"});
    startControllerAndWait();
    server_->pactl({"set-sink-volume", "spk", "150%"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
    EXPECT_EQ(server_->sinkVolumes("spk"), (std::vector<unsigned>{98304, 98304}));
}

TEST_P(PulseFollowing, FollowsAnotherDefaultDeviceWithItsRoute) {
    startBoth();
    EXPECT_EQ(controller_->routeForCategory("Audio/Video"), "Speaker");
    server_->pactl({"set-sink-volume", "hp", "16384"});
    server_->pactl({"set-default-sink", "hp"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.25F));
    EXPECT_EQ(controller_->routeForCategory("Audio/Video"), "Headphones");
    EXPECT_EQ(controller_->routeForCategory("PhoneCall"), "Headphones");
}

TEST_P(PulseFollowing, AnnouncesARouteThatChangedWithoutTheVolume) {
    startBoth();
    posted_.clear();
    server_->pactl({"set-default-sink", "hp"});  // Both devices are at 100 %.
    ASSERT_TRUE(waitUntil([&] { return lastPosted("Audio/Video") && lastPosted("Ringtone"); }));
    EXPECT_EQ(lastPosted("Audio/Video")->volume, 1);
    EXPECT_EQ(controller_->routeForCategory("Ringtone"), "Headphones");
}

TEST_P(PulseFollowing, IgnoresADeviceThatIsNotTheDefault) {
    startBoth();
    posted_.clear();
    server_->pactl({"set-sink-volume", "hp", "16384"});
    server_->pactl({"set-sink-volume", "spk", "40%"});
    ASSERT_TRUE(waitForVolume("Audio/Video", 0.4F));
    EXPECT_EQ(volumesPosted("Audio/Video").size(), 1U);
    EXPECT_EQ(volumesPosted("Ringtone").size(), 0U);
}

TEST_P(PulseFollowing, TakesTheNextDeviceWhenTheDefaultOneGoes) {
    startBoth();
    const std::string module = server_->loadSink("new");
    server_->pactl({"set-sink-volume", "new", "16384"});
    server_->pactl({"set-default-sink", "new"});
    ASSERT_TRUE(waitForVolume("Audio/Video", 0.25F));
    server_->pactl({"unload-module", module});
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
}

TEST_P(PulseFollowing, CannotReadAnythingWithoutARealDeviceUntilOneComes) {
    server_->setSinks({});
    server_->start();
    ASSERT_TRUE(waitUntil([&] { return hasPlaceholder(); }));
    startController();
    ASSERT_TRUE(waitUntil([&] { return isReady(); }));
    EXPECT_EQ(volumeOf("Audio/Video"), unreadable);
    EXPECT_EQ(volumeOf("Ringtone"), unreadable);
    EXPECT_EQ(routeOf("Audio/Video"), "Speaker");

    const std::string module = server_->loadSink("new");
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
    EXPECT_TRUE(waitForVolume("Ringtone", 1));

    int rereads = 0;
    controller_->setAvailabilityHandler([&] { ++rereads; });
    server_->pactl({"unload-module", module});
    ASSERT_TRUE(waitUntil([&] { return rereads > 0 && volumeOf("Audio/Video") == unreadable; }));
    EXPECT_EQ(volumeOf("Ringtone"), unreadable);
}

TEST_F(PulseAudioFollowing, CannotReadTheRingtoneWhereTheServerKeepsNoRoles) {
    pulseAudio().setRoleEntries(rigs::PulseAudioServer::RoleEntries::None);
    startBoth();
    EXPECT_EQ(volumeOf("Audio/Video"), 1);
    EXPECT_EQ(volumeOf("Ringtone"), unreadable);
    EXPECT_FALSE(controller_->setVolumeTo(0.5F, "Ringtone"));
}

TEST_P(PulseFollowing, CannotReadWhatItDoesNotKnow) {
    startBoth();
    float untouched = 0.25F;
    for (const NSString& category : {NSString("HeadsetBT"), NSString("Nonsense"), NSString("")}) {
        EXPECT_FALSE(controller_->getVolume(untouched, category));
        EXPECT_FALSE(controller_->setVolumeTo(0.5F, category));
    }
    EXPECT_FALSE(controller_->getVolume(untouched, std::nullopt));
    EXPECT_FALSE(controller_->setVolumeTo(0.5F, std::nullopt));
    EXPECT_EQ(untouched, 0.25F);
    EXPECT_EQ(controller_->routeForCategory(std::nullopt), std::nullopt);
    EXPECT_EQ(controller_->routeForCategory("Nonsense"), std::nullopt);
}
