#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

constexpr const char* debugLogging = "<key>enableDebugLogging</key><true/>";

/// The mixer inside the container, across dismissals.
class WidgetControllerMixer : public HeadlessFixture {
 protected:
    void show() {
        start({"--parent-width", "320"});
        expectOk("create");
        expectOk("call view");
        expectOk("call hostWillPresent");
    }
    Json container() { return resultOf("tree").at("subviews").at(0); }
    Json mixer() { return container().at("subviews").at(0); }
    std::string captionOf(int categoryNumber) {
        return viewWithTag(1000 + categoryNumber).at("text");
    }
};

TEST_F(WidgetControllerMixer, FillsTheContainer) {
    show();
    EXPECT_EQ(container().at("frame").dump(), "[0,0,320,270]");
    EXPECT_EQ(mixer().at("frame").dump(), "[0,0,320,270]");
    EXPECT_EQ(mixer().at("subviews").at(4).at("frame").dump(), "[0,210,320,50]");
}

TEST_F(WidgetControllerMixer, IsAssembledAnewFromBothFilesAfterADismissal) {
    show();
    EXPECT_EQ(captionOf(0), "Ringtone: 50%");
    expectOk("call hostDidDismiss");
    files.writeCategories(
        {{"HeadsetBT", "Headset"}, {"Ringtone", "Bell", Row::Hidden}, {"Audio/Video", "Media"}});
    files.writeSettings(
        "<key>displayPercentage</key><false/>"
        "<key>selectedSkin</key><string>Metal</string>");
    EXPECT_EQ(expectOk("call hostWillPresent"),
              (Happened{"host widget:didUpdatePreferredSize: 320 x 120",
                        "log TW: self.preferredViewSize: {320, 120}",
                        "host invalidatePreferredViewSize", visible}));
    EXPECT_EQ(captionOf(0), "Headset");
    EXPECT_TRUE(viewWithTag(1001).is_null());
    EXPECT_EQ(captionOf(2), "Media (Speaker)");
    EXPECT_EQ(viewWithTag(2002).at("thumbImage").at("normal"), "thumb_metal");
    EXPECT_EQ(mixer().at("subviews").size(), 2U);
    EXPECT_EQ(mixer().at("frame").dump(), "[0,0,320,120]");
}

TEST_F(WidgetControllerMixer, KeepsItsFilesUntilItIsDismissed) {
    show();
    files.writeShownCategories(2);
    files.writeSettings("<key>displayPercentage</key><false/>");
    expectOk("call hostWillPresent");
    EXPECT_EQ(mixer().at("subviews").size(), 5U);
    EXPECT_EQ(captionOf(0), "Ringtone: 50%");
}

TEST_F(WidgetControllerMixer, IsPutIntoTheContainerOfTheFirstPresentation) {
    show();
    expectOk("call hostDidDismiss");
    EXPECT_EQ(container().at("frame").dump(), "[0,0,320,270]");
    expectOk("parent 400");
    files.writeShownCategories(3);
    expectOk("call hostWillPresent");
    EXPECT_EQ(container().at("frame").dump(), "[0,0,320,270]");
    EXPECT_EQ(mixer().at("frame").dump(), "[0,0,400,170]");
    // A row is as wide as the container, which keeps its first width.
    EXPECT_EQ(mixer().at("subviews").at(2).at("frame").dump(), "[0,110,320,50]");
}

TEST_F(WidgetControllerMixer, ReadsItsRowsAgainWhenAHostAsksForIt) {
    show();
    expectOk("volume Audio/Video 0.25");
    expectOk("readable Ringtone no");
    expectOk("route Audio/Video Headphones");
    EXPECT_EQ(captionOf(0), "Ringtone: 50%");
    EXPECT_TRUE(resultOf("call updateValues").is_null());
    EXPECT_EQ(captionOf(0), "Ringtone: unknown");
    EXPECT_EQ(captionOf(1), "Audio/Video (Headphones): 25%");
    EXPECT_TRUE(viewWithTag(2000).at("animating").get<bool>()) << "on its way to nothing";
    EXPECT_EQ(viewWithTag(2000).at("value"), 0);
    expectOk("advance 1000");
    EXPECT_FALSE(viewWithTag(2000).at("animating").get<bool>());
    expectOk("call hostDidDismiss");
    EXPECT_TRUE(resultOf("call updateValues").is_null())
        << "without a mixer there is nothing to do";
}

TEST_F(WidgetControllerMixer, KeepsASliderInTheHandWhileItReadsItsRowsAgain) {
    show();
    expectOk("touch began 160 45");
    expectOk("touch moved 250 45");
    const Json held = viewWithTag(2000).at("value");
    expectOk("readable HeadsetBT no");
    expectOk("call updateValues");
    EXPECT_EQ(viewWithTag(2000).at("value"), held);
    EXPECT_TRUE(viewWithTag(2000).at("highlighted").get<bool>());
    EXPECT_EQ(expectOk("touch moved 5000 45").front(), "set Ringtone 1");
}

TEST_F(WidgetControllerMixer, WritesTheCategoryFileAtItsFirstAssembly) {
    start({"--parent-width", "320"});
    expectOk("create");
    EXPECT_EQ(expectOk("call view"),
              (Happened{"log TW: creating initial category config file...", visible}));
    EXPECT_TRUE(std::filesystem::exists(files.categoryFile()));
    expectOk("call hostDidDismiss");
    EXPECT_EQ(expectOk("call hostWillPresent").size(), 4U);
}

TEST_F(WidgetControllerMixer, TellsOfItsAssemblyBeforeItIsAnnounced) {
    files.writeCategories({{"Ringtone", "Ringtone"}, {"Audio/Video", "Media", Row::Hidden}});
    files.writeSettings(debugLogging);
    start({"--parent-width", "320"});
    expectOk("create");
    EXPECT_EQ(expectOk("call view"),
              (Happened{"log TW: got 2 categories", "log TW: updating category Ringtone",
                        "log TW: adding volume observer...", visible}));
    EXPECT_EQ(expectOk("call hostDidDismiss"), (Happened{hidden, "log TW: view dealloc"}));
    EXPECT_EQ(
        expectOk("call hostWillPresent"),
        (Happened{"host widget:didUpdatePreferredSize: 320 x 70",
                  "log TW: self.preferredViewSize: {320, 70}", "host invalidatePreferredViewSize",
                  "log TW: got 2 categories", "log TW: updating category Ringtone",
                  "log TW: adding volume observer...", visible}));
    EXPECT_EQ(expectOk("release"), (Happened{"log TW: dealloc", hidden, "log TW: view dealloc"}));
}

TEST_F(WidgetControllerMixer, HearsOfVolumesOnlyWhileItIsThere) {
    files.writeCategories({{"Ringtone", "Ringtone"}});
    files.writeSettings(debugLogging);
    show();
    const Happened heard = {
        "volume Ringtone 0.25",
        "log TW: VolumeChangedNotification for category Ringtone, new volume is 0.250000"};
    EXPECT_EQ(expectOk("volume Ringtone 0.25"), heard);
    expectOk("call hostDidDismiss");
    EXPECT_EQ(expectOk("volume Ringtone 0.75"), Happened{"volume Ringtone 0.75"});
    expectOk("call hostWillPresent");
    EXPECT_EQ(captionOf(0), "Ringtone: 75%");
    EXPECT_EQ(expectOk("volume Ringtone 0.25"), heard);
    expectOk("release");
    EXPECT_EQ(expectOk("volume Ringtone 0.75"), Happened{"volume Ringtone 0.75"});
}

TEST_F(WidgetControllerMixer, HearsOfAVolumeOnceAfterSeveralPresentations) {
    files.writeCategories({{"Ringtone", "Ringtone"}});
    files.writeSettings(debugLogging);
    show();
    for (int i = 0; i < 3; ++i) {
        expectOk("call hostDidDismiss");
        expectOk("call hostWillPresent");
        expectOk("call hostWillPresent");
    }
    EXPECT_EQ(expectOk("volume Ringtone 0.25").size(), 2U);
}

TEST_F(WidgetControllerMixer, DismissedUnderAFingerForgetsTheTouch) {
    show();
    expectOk("touch began 160 45");
    expectOk("call hostDidDismiss");
    EXPECT_EQ(expectOk("touch moved 200 45"), Happened{});
    EXPECT_EQ(expectOk("touch ended 200 45"), Happened{});
    expectOk("call hostWillPresent");
    EXPECT_EQ(captionOf(0), "Ringtone: 50%");
    EXPECT_FALSE(viewWithTag(2000).at("highlighted").get<bool>());
}

TEST_F(WidgetControllerMixer, LinesOfTheControllerNeedNoSetting) {
    files.writeSettings("<key>enableDebugLogging</key><false/>");
    show();
    EXPECT_EQ(expectOk("call viewHeight"), Happened{"log TW: viewHeight"});
    EXPECT_EQ(expectOk("call unloadView"), (Happened{"log TW: unloadView", hidden}));
    EXPECT_EQ(expectOk("release"), (Happened{"log TW: dealloc", hidden}));
}

}  // namespace
}  // namespace test
