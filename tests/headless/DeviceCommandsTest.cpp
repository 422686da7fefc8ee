#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

class DeviceCommands : public HeadlessFixture {
 protected:
    void show() {
        start({"--parent-width", "320"});
        expectOk("create");
        expectOk("call view");
    }
    std::string captionOf(int categoryNumber) {
        return viewWithTag(1000 + categoryNumber).at("text").get<std::string>();
    }
    Json valueOf(int categoryNumber) { return viewWithTag(2000 + categoryNumber).at("value"); }
};

TEST_F(DeviceCommands, StartWithEveryKnownCategoryAtHalfOnTheSpeaker) {
    files.writeCategories({{"Ringtone", "Ringtone"},
                           {"Audio/Video", "Media"},
                           {"HeadsetBT", "Headset"},
                           {"HeadphonesBT", "Headphones"},
                           {"PhoneCall", "Call"},
                           {"VideoConference", "Conference"},
                           {"Nobody", "Nobody"}});
    show();
    EXPECT_EQ(captionOf(0), "Ringtone: 50%");
    EXPECT_EQ(captionOf(1), "Media (Speaker): 50%");
    EXPECT_EQ(captionOf(2), "Headset: 50%");
    EXPECT_EQ(captionOf(3), "Headphones: 50%");
    EXPECT_EQ(captionOf(4), "Call (Speaker): 50%");
    EXPECT_EQ(captionOf(5), "Conference (Speaker): 50%");
    EXPECT_EQ(captionOf(6), "Nobody: unknown");
    EXPECT_EQ(valueOf(0), 50);
    EXPECT_EQ(valueOf(6), 0);
}

TEST_F(DeviceCommands, VolumeChangesTheStateAndNotifies) {
    show();
    EXPECT_EQ(expectOk("volume Ringtone 0.376"), Happened{"volume Ringtone 0.376"});
    EXPECT_EQ(captionOf(0), "Ringtone: 38%");
    EXPECT_EQ(valueOf(0), 37.6);
    EXPECT_EQ(valueOf(1), 50);
}

TEST_F(DeviceCommands, VolumeIsKeptWithinItsRange) {
    show();
    EXPECT_EQ(expectOk("volume Ringtone 1.5"), Happened{"volume Ringtone 1"});
    EXPECT_EQ(expectOk("volume Ringtone -0.5"), Happened{"volume Ringtone 0"});
    EXPECT_EQ(expectOk("volume Ringtone 1e300"), Happened{"volume Ringtone 1"});
    EXPECT_EQ(captionOf(0), "Ringtone: 100%");
}

TEST_F(DeviceCommands, ACategoryComesIntoBeingWhenItIsNamed) {
    files.writeCategories({{"ByVolume", "Volume"},
                           {"By Route", "Route"},
                           {"ByReadable", "Readable"},
                           {"ByNotify", "Notify"},
                           {"Silent", "Silent"}});
    start({"--parent-width", "320"});
    expectOk("volume ByVolume 0.25");
    expectOk("route \"By Route\" Dock");
    expectOk("readable ByReadable yes");
    expectOk("notify ByNotify");
    expectOk("readable Silent no");
    expectOk("create");
    expectOk("call view");
    EXPECT_EQ(captionOf(0), "Volume: 25%");
    EXPECT_EQ(captionOf(1), "Route: 50%");
    EXPECT_EQ(captionOf(2), "Readable: 50%");
    EXPECT_EQ(captionOf(3), "Notify: 50%");
    EXPECT_EQ(captionOf(4), "Silent: unknown");
}

TEST_F(DeviceCommands, NotifyPostsWhatItIsToldAndNothingElse) {
    show();
    EXPECT_EQ(expectOk("notify Ringtone 0.7"), Happened{"volume Ringtone 0.7"});
    EXPECT_EQ(captionOf(0), "Ringtone: 70%");
    EXPECT_EQ(expectOk("notify Ringtone 2"), Happened{"volume Ringtone 2"});
    EXPECT_EQ(captionOf(0), "Ringtone: 200%");
    expectOk("call hostDidDismiss");
    expectOk("call hostWillPresent");
    EXPECT_EQ(captionOf(0), "Ringtone: 50%");
}

TEST_F(DeviceCommands, NotifyLeavesOutWhatIsMissing) {
    show();
    const std::string unmatched =
        "log TW: unable to match category (null) to TW categories list, GUI not updated!";
    EXPECT_EQ(expectOk("notify"), (Happened{"volume null null", unmatched}));
    EXPECT_EQ(expectOk("notify -"), (Happened{"volume null null", unmatched}));
    EXPECT_EQ(expectOk("notify - 0.5"), (Happened{"volume null 0.5", unmatched}));
    EXPECT_EQ(expectOk("notify Ringtone -"), Happened{"volume Ringtone null"});
    EXPECT_EQ(captionOf(0), "Ringtone: 0%");
    EXPECT_EQ(expectOk("notify \"-\" 0.5"),
              (Happened{"volume - 0.5",
                        "log TW: unable to match category - to TW categories list, GUI not "
                        "updated!"}));
}

TEST_F(DeviceCommands, StateChangesWithoutANotificationShowAtTheNextAssembly) {
    show();
    EXPECT_EQ(expectOk("readable Ringtone no"), Happened{});
    EXPECT_EQ(expectOk("route Audio/Video \"My Headset\""), Happened{});
    EXPECT_EQ(expectOk("route PhoneCall none"), Happened{});
    EXPECT_EQ(captionOf(0), "Ringtone: 50%");
    expectOk("call hostDidDismiss");
    expectOk("call hostWillPresent");
    EXPECT_EQ(captionOf(0), "Ringtone: unknown");
    EXPECT_EQ(captionOf(1), "Audio/Video (My Headset): 50%");
    EXPECT_EQ(captionOf(4), "Phone Call ((null)): 50%");
    expectOk("route PhoneCall \"none\"");
    expectOk("notify PhoneCall 0.5");
    EXPECT_EQ(captionOf(4), "Phone Call (none): 50%");
}

TEST_F(DeviceCommands, ServiceCanBeAbsent) {
    start({"--parent-width", "320"});
    expectOk("service no");
    expectOk("create");
    expectOk("call view");
    EXPECT_EQ(captionOf(0), "Ringtone: unknown");
    EXPECT_EQ(captionOf(1), "Audio/Video ((null)): unknown");
    expectOk("service yes");
    expectOk("call hostDidDismiss");
    expectOk("call hostWillPresent");
    EXPECT_EQ(captionOf(1), "Audio/Video (Speaker): 50%");
}

TEST_F(DeviceCommands, AnErrorThatLeavesTheWidgetIsTheResultAndTheHostGoesOn) {
    files.writeCategories({{"Ringtone", "Ringtone"}});
    files.writeSettings("<key>bindRingerAndAV</key><true/>");
    show();
    for (const char* command : {"notify Ringtone 0.7", "volume Ringtone 0.8"}) {
        const Reply reply = send(command);
        EXPECT_FALSE(reply.isOk()) << command;
        EXPECT_NE(reply.error(), "") << command;
    }
    EXPECT_TRUE(send("tree").isOk());
}

}  // namespace
}  // namespace test
