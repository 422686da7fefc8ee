#include "tests/pulse/PulseFixture.hpp"

// What the service reads and follows when it is changed elsewhere.

class PulseFollowing : public PulseFixture {};

TEST_F(PulseFollowing, ReadsTheDefaultDeviceAndAnnouncesItAtTheStart) {
    server_.addScriptLine("set-sink-volume spk 24642");
    startBoth();
    EXPECT_TRUE(waitForVolume("Audio/Video", 24642.0F / 65536));
    EXPECT_TRUE(waitForVolume("Ringtone", 1));
    EXPECT_EQ(posted_.size(), 2U);
}

TEST_F(PulseFollowing, FollowsAVolumeSetElsewhere) {
    startBoth();
    server_.pactl({"set-sink-volume", "spk", "40%"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.4F));
}

TEST_F(PulseFollowing, ShowsTheLoudestChannel) {
    startBoth();
    server_.pactl({"set-sink-volume", "spk", "16384", "49152"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.75F));
}

TEST_F(PulseFollowing, ShowsAMutedDeviceAsSilentAndComesBackUnmuted) {
    startBoth();
    server_.pactl({"set-sink-volume", "spk", "40%"});
    ASSERT_TRUE(waitForVolume("Audio/Video", 0.4F));
    server_.pactl({"set-sink-mute", "spk", "1"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0));
    server_.pactl({"set-sink-mute", "spk", "0"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.4F));
}

TEST_F(PulseFollowing, ShowsAnAmplifiedDeviceAsFullAndLeavesItSo) {
    server_.addScriptLine("set-sink-volume spk 32768");
    startBoth();
    server_.pactl({"set-sink-volume", "spk", "150%"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
    EXPECT_EQ(server_.sinkVolumes("spk"), (std::vector<unsigned>{98304, 98304}));
}

TEST_F(PulseFollowing, FollowsAnotherDefaultDeviceWithItsRoute) {
    startBoth();
    EXPECT_EQ(controller_->routeForCategory("Audio/Video"), "Speaker");
    server_.pactl({"set-sink-volume", "hp", "16384"});
    server_.pactl({"set-default-sink", "hp"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.25F));
    EXPECT_EQ(controller_->routeForCategory("Audio/Video"), "Headphones");
    EXPECT_EQ(controller_->routeForCategory("PhoneCall"), "Headphones");
}

TEST_F(PulseFollowing, AnnouncesARouteThatChangedWithoutTheVolume) {
    startBoth();
    posted_.clear();
    server_.pactl({"set-default-sink", "hp"});  // Both devices are at 100 %.
    ASSERT_TRUE(waitUntil([&] { return lastPosted("Audio/Video") && lastPosted("Ringtone"); }));
    EXPECT_EQ(lastPosted("Audio/Video")->volume, 1);
    EXPECT_EQ(controller_->routeForCategory("Ringtone"), "Headphones");
}

TEST_F(PulseFollowing, IgnoresADeviceThatIsNotTheDefault) {
    startBoth();
    posted_.clear();
    server_.pactl({"set-sink-volume", "hp", "16384"});
    server_.pactl({"set-sink-volume", "spk", "40%"});
    ASSERT_TRUE(waitForVolume("Audio/Video", 0.4F));
    EXPECT_EQ(posted_.size(), 1U);
}

TEST_F(PulseFollowing, TakesTheNextDeviceWhenTheDefaultOneGoes) {
    startBoth();
    server_.pactl({"set-sink-volume", "hp", "16384"});
    server_.pactl({"unload-module", "0"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.25F));
}

TEST_F(PulseFollowing, CannotReadAnythingWithoutARealDeviceUntilOneComes) {
    server_.addScriptLine("load-module module-always-sink");
    startBoth();
    int rereads = 0;
    controller_->setAvailabilityHandler([&] { ++rereads; });
    server_.pactl({"unload-module", "1"});
    server_.pactl({"unload-module", "0"});
    ASSERT_TRUE(waitUntil([&] { return rereads > 0 && volumeOf("Audio/Video") == unreadable; }));
    EXPECT_EQ(volumeOf("Ringtone"), unreadable);
    EXPECT_TRUE(controller_->routeForCategory("Audio/Video").has_value());

    posted_.clear();
    server_.pactl({"load-module", "module-null-sink", "sink_name=new"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
    EXPECT_TRUE(waitForVolume("Ringtone", 1));
}

TEST_F(PulseFollowing, ReadsTheRingtoneFromTheEventEntryAndFollowsIt) {
    startBoth();
    auto other = std::make_shared<PulseAudioController>(server_.address());
    ASSERT_TRUE(waitUntil([&] { return other->state() == PulseAudioController::State::Ready; }));
    ASSERT_TRUE(other->setVolumeTo(0.376F, "Ringtone"));
    EXPECT_TRUE(waitForVolume("Ringtone", 24642.0F / 65536));
    EXPECT_EQ(volumeOf("Audio/Video"), 1);
}

TEST_F(PulseFollowing, CannotReadTheRingtoneWhereTheServerKeepsNoRoles) {
    server_.setExtension(PrivatePulseServer::Extension::None);
    startBoth();
    EXPECT_EQ(volumeOf("Audio/Video"), 1);
    EXPECT_EQ(volumeOf("Ringtone"), unreadable);
    EXPECT_FALSE(controller_->setVolumeTo(0.5F, "Ringtone"));
}

TEST_F(PulseFollowing, CannotReadWhatItDoesNotKnow) {
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
