#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "tests/locale/CommaLocale.hpp"
#include "tests/phosh/LockWidgetFixture.hpp"
#include "tests/pulse/Memory.hpp"
#include "tests/rigs/Waiting.hpp"

#include <libintl.h>

#include <algorithm>

namespace test {
namespace {

using Names = std::vector<std::string>;

using LockWidgetTest = LockWidgetFixture;

TEST_F(LockWidgetTest, LockingAloneLoadsAndAnnouncesNothing) {
    lock();
    screen->showBesideMixer();
    rigs::runFor(0.1);
    EXPECT_EQ(announced, Names{});
    EXPECT_TRUE(sliders().empty());
    unlock();
    EXPECT_EQ(announced, Names{"ishidden"}) << "the controller's own last word";
}

TEST_F(LockWidgetTest, SaysWhatIsWrongWithTheFilesOnceItIsSeen) {
    std::vector<std::string> log;
    setLogSink([&](const std::string& line) { log.push_back(line); });
    files.writeSettings("<key>selectedSkin</key><string>Glass</string>");
    lockAtMixer();
    const std::string line = "tarnwick: " + files.settingsFile().string() + ":1:";
    const auto isSaid = [&] {
        return std::ranges::count_if(log, [&](const auto& each) { return each.starts_with(line); });
    };
    EXPECT_TRUE(rigs::waitUntil([&] { return isSaid() > 0; }));
    screen->turnAway();
    ASSERT_TRUE(waitUntilDismissed());
    screen->turnBack();
    ASSERT_TRUE(waitUntilPresented());
    rigs::runFor(0.1);
    setLogSink({});
    EXPECT_EQ(isSaid(), 1) << "once";
    const std::vector<std::string> shown = labels();
    EXPECT_TRUE(std::ranges::any_of(shown, [](const std::string& label) {
        return label.find("no skin 'Glass'") != std::string::npos;
    }));
}

TEST_F(LockWidgetTest, SpeaksTheLanguageOfTheShellAndChangesNothingOfItsLocale) {
    const CommaLocale german;
    if (!german.isActive()) GTEST_SKIP() << "no German locale on this system";
    files.writeSettings("<key>selectedSkin</key><string>Glass</string>");
    const auto isShown = [](const char* part) {
        return std::ranges::any_of(labels(), [&](const std::string& label) {
            return label.find(part) != std::string::npos;
        });
    };
    lockAtMixer();
    EXPECT_TRUE(rigs::waitUntil([&] { return isShown("kein Skin 'Glass'"); }));
    EXPECT_TRUE(isShown("unknown")) << "captions keep their words";
    EXPECT_STREQ(textdomain(nullptr), "messages");
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "de_DE.UTF-8");
}

TEST_F(LockWidgetTest, KeepsToTheChoiceOfOutputsForRoles) {
    folder.writeOutputs("apart");
    sound.beAsInASession();
    sound.startAndWait();
    lockAtMixer();
    EXPECT_TRUE(
        rigs::waitUntil([&] { return folder.outputs().find("phase=up") != std::string::npos; }));
    const std::string sinks = sound.pactl({"list", "short", "sinks"});
    EXPECT_NE(sinks.find("role.multimedia"), std::string::npos) << sinks;
}

TEST_F(LockWidgetTest, OffersNoOutputsForRoles) {
    sound.startAndWait();
    lockAtMixer();
    rigs::runFor(0.3);
    const std::vector<std::string> shown = labels();
    EXPECT_EQ(shown.size(), 5U);
    EXPECT_EQ(folder.outputs(), "") << "nothing was decided";
    const std::string sinks = sound.pactl({"list", "short", "sinks"});
    EXPECT_EQ(sinks.find("role.multimedia"), std::string::npos);
}

TEST_F(LockWidgetTest, FirstTurnToThePagePresentsAndEveryOtherDismissesAndPresents) {
    lock();
    screen->showBesideMixer();
    screen->turnBack();
    ASSERT_TRUE(waitUntilPresented());
    EXPECT_EQ(announced, (Names{"isvisible", "isvisible"})) << "when it is loaded, and presented";
    EXPECT_EQ(sliders().size(), 5U);
    screen->turnAway();
    ASSERT_TRUE(waitUntilDismissed());
    EXPECT_TRUE(sliders().empty());
    screen->turnBack();
    ASSERT_TRUE(waitUntilPresented());
    EXPECT_EQ(announced, (Names{"isvisible", "isvisible", "ishidden", "isvisible"}));
    EXPECT_EQ(sliders().size(), 5U);
}

TEST_F(LockWidgetTest, UnlockingDismissesWhatIsSeenAndReleasesIt) {
    lockAtMixer();
    announced.clear();
    unlock();
    EXPECT_EQ(announced, (Names{"ishidden", "ishidden"}));
    EXPECT_TRUE(UIWindow::windows().empty());
}

TEST_F(LockWidgetTest, HidingThePageDismisses) {
    lockAtMixer();
    screen->hide();
    EXPECT_FALSE(isPresented()) << "at once";
}

TEST_F(LockWidgetTest, LocksAgainAfterUnlocking) {
    for (int i = 0; i < 3; ++i) {
        lockAtMixer();
        EXPECT_EQ(sliders().size(), 5U);
        unlock();
        EXPECT_FALSE(isPresented());
    }
}

TEST_F(LockWidgetTest, ReadsTheRowsAnewEachTimeThePageIsTurnedTo) {
    lockAtMixer();
    screen->turnAway();
    ASSERT_TRUE(waitUntilDismissed());
    files.writeShownCategories(2);
    screen->turnBack();
    ASSERT_TRUE(waitUntilPresented());
    EXPECT_EQ(sliders().size(), 2U);
}

TEST_F(LockWidgetTest, FollowsTheFilesWhileItIsSeen) {
    files.writeSettings("<key>selectedSkin</key><string>Glass</string>");
    lockAtMixer();
    const auto hasLookedThroughFiles = [] {
        return std::ranges::any_of(labels(), [](const std::string& label) {
            return label.find("no skin 'Glass'") != std::string::npos;
        });
    };
    ASSERT_TRUE(rigs::waitUntil(hasLookedThroughFiles)) << "they are watched from then on";
    files.writeShownCategories(2);
    EXPECT_TRUE(rigs::waitUntil([] { return sliders().size() == 2; }));
    screen->turnAway();
    ASSERT_TRUE(waitUntilDismissed());
    files.writeShownCategories(3);
    rigs::runFor(0.2);
    EXPECT_TRUE(sliders().empty());
}

TEST_F(LockWidgetTest, IsAsWideAsThePageAndFollowsIt) {
    lock(412, 700);
    screen->showAtMixer();
    ASSERT_TRUE(waitUntilPresented());
    const auto rightEnd = [] {
        const auto all = sliders();
        if (all.empty()) return CGFloat{0};
        const UISlider& first = *all.front();
        return CGRectGetMaxX(first.convertRectToView(first.bounds(), nullptr));
    };
    constexpr CGFloat besideTheTrack = 20;  // Points: the rows' own margin.
    const auto isAsWideAs = [&](CGFloat width) {
        return rigs::waitUntil([&] { return width - rightEnd() == besideTheTrack; });
    };
    EXPECT_TRUE(isAsWideAs(412)) << rightEnd();
    screen->resize(700, 412);
    EXPECT_TRUE(isAsWideAs(700)) << rightEnd();
    EXPECT_EQ(sliders().size(), 5U);
}

TEST_F(LockWidgetTest, LeavesTheMainLoopToTheShellOnceUnlocked) {
    lockAtMixer();
    unlock();
    EXPECT_EQ(AVSystemController::sharedAVSystemController(), nullptr);
    bool called = false;
    NSRunLoop::mainRunLoop().performAfterDelay(0, [&called] { called = true; });
    rigs::runFor(0.05);
    EXPECT_FALSE(called) << "something of the plugin's still runs";
    lockAtMixer();
    EXPECT_TRUE(rigs::waitUntil([&called] { return called; }));
}

TEST_F(LockWidgetTest, VolumeThatIsOnItsWayWhileUnlockingArrives) {
    sound.startAndWait();
    lockAtMixer();
    ASSERT_TRUE(rigs::waitUntil([] { return sliders()[1]->value() == 100; }));
    const CGPoint middle = middleOf(*sliders()[1]);
    screen->pointer(GDK_BUTTON_PRESS, middle.x, middle.y);
    EXPECT_NEAR(sliders()[1]->value(), 50, 5);
    unlock();
    EXPECT_TRUE(rigs::waitUntil([this] {
        const double volume = sound.sinkVolumes("spk").front() / 65536.0;
        return volume > 0.4 && volume < 0.6;
    }));
}

TEST_F(LockWidgetTest, BundleThatIsMissingIsALineOfText) {
    setenv("TARNWICK_BUNDLE", "/nowhere/Mixer.bundle", 1);
    lock();
    screen->showAtMixer();
    EXPECT_TRUE(rigs::waitUntil([] { return labels() == Names{"Mixer could not be loaded"}; }));
    unlock();
}

TEST_F(LockWidgetTest, BundleThatIsBrokenIsALineOfText) {
    const std::filesystem::path bundle = files.folder() / "Broken.bundle";
    std::filesystem::copy(TARNWICK_BUNDLE_DIR, bundle, std::filesystem::copy_options::recursive);
    MixerFiles::write(bundle / "Tarnwick", "no module");
    setenv("TARNWICK_BUNDLE", bundle.c_str(), 1);
    lock();
    screen->showAtMixer();
    EXPECT_TRUE(rigs::waitUntil([] { return labels() == Names{"Broken could not be loaded"}; }));
}

TEST_F(LockWidgetTest, OutlivesAPageThatIsHeldLongerThanTheLock) {
    lockAtMixer();
    GtkWidget* widget = GTK_WIDGET(g_object_ref(screen->widget()));
    unlock();
    EXPECT_TRUE(UIWindow::windows().empty());
    gtk_widget_queue_resize(widget);
    g_object_unref(widget);
}

TEST_F(LockWidgetTest, FiveHundredLocksLeaveMemoryAndDescriptorsFlat) {
    sound.startAndWait();
    const auto once = [this] {
        announced.clear();
        lockAtMixer();
        ASSERT_TRUE(rigs::waitUntil([] { return sliders()[1]->value() == 100; }));
        unlock();
    };
    constexpr int warmingUp = 50;
    constexpr int locks = 500;
    // What waits in the platform's main loop waits until the next lock, and what the display has
    // to say of windows that are gone, in its queue.
    const auto rest = [this] {
        lockAtMixer();
        ASSERT_TRUE(rigs::waitUntil([] { return !NSRunLoop::mainRunLoop().nextDue(); }));
        unlock();
        gdk_display_sync(gdk_display_get_default());
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
    };
    for (int i = 0; i < warmingUp; ++i)
        once();
    rest();
    const std::size_t bytes = allocatedBytes();
    const std::ptrdiff_t descriptors = openDescriptors();
    for (int i = 0; i < locks; ++i)
        once();
    rest();
    const auto grown = static_cast<std::ptrdiff_t>(allocatedBytes() - bytes);
    RecordProperty("grownBytes", std::to_string(grown));
    constexpr std::ptrdiff_t aLittle = 16 * 1024;  // Buffers of libraries, whatever the locks.
    EXPECT_LE(grown, aLittle) << grown << " bytes in " << locks << " locks";
    EXPECT_EQ(openDescriptors(), descriptors);
}

}  // namespace
}  // namespace test
