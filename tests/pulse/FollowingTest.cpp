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

TEST_F(PulseAudioFollowing, SaysWhatTheServerRefusesToDescribeWhereThatIsDebugged) {
    pulseAudio().setRoleEntries(rigs::PulseAudioServer::RoleEntries::None);
    setenv("TARNWICK_DEBUG", "sound", 1);
    testing::internal::CaptureStderr();
    startBoth();
    unsetenv("TARNWICK_DEBUG");
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("sound: the server refuses to describe its stored volumes: "
                        "No such extension\n"),
              std::string::npos)
        << said;
    EXPECT_NE(said.find("sound: the server refuses to announce changes of stored volumes: "
                        "No such extension\n"),
              std::string::npos)
        << said;
}

TEST_F(PulseAudioFollowing, CannotReadNorChangeWhatItDoesNotKnow) {
    startBoth();
    float untouched = 0.25F;
    for (const NSString& category : {NSString("HeadsetBT"), NSString("Nonsense"), NSString("")}) {
        EXPECT_FALSE(controller_->getVolume(untouched, category));
        EXPECT_FALSE(controller_->setVolumeTo(0.5F, category));
        EXPECT_EQ(controller_->levelOf(category), std::nullopt);
        EXPECT_FALSE(controller_->setMute(AVSystemController::Mute::On, category));
        EXPECT_FALSE(controller_->toggleMute(category));
        EXPECT_FALSE(controller_->stepVolumeBy(0.05, category));
    }
    EXPECT_FALSE(controller_->getVolume(untouched, std::nullopt));
    EXPECT_FALSE(controller_->setVolumeTo(0.5F, std::nullopt));
    EXPECT_EQ(untouched, 0.25F);
    EXPECT_EQ(controller_->routeForCategory(std::nullopt), std::nullopt);
    EXPECT_EQ(controller_->routeForCategory("Nonsense"), std::nullopt);
}
