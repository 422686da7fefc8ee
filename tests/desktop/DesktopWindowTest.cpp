#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/uikit/UIButton.hpp"
#include "platform/uikit/UIView.hpp"
#include "shells/desktop/PopupPlace.hpp"
#include "tests/desktop/DesktopFixture.hpp"

#include <X11/keysym.h>
#include <gdk/gdkx.h>
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

#include <algorithm>
#include <cmath>

using namespace desktop;

namespace test {
namespace {

constexpr std::uint32_t thumbIsAtLeast = 0xE0;  // The thumb is nearly white.

class DesktopWindowTest : public DesktopFixture {
 protected:
    bool thumbIsSeenAt(const CGPoint& point) {
        gdk_display_sync(gdk_display_get_default());
        const std::uint32_t pixel = user->pixelAt(point.x, point.y + 4);
        return (pixel & 0xFF) >= thumbIsAtLeast && ((pixel >> 8) & 0xFF) >= thumbIsAtLeast;
    }
    void pointAt(const CGPoint& point) { user->moveTo(point.x, point.y); }
};

TEST_F(DesktopWindowTest, DragOfAThumbSetsTheDevicesVolume) {
    open();
    const auto ringtone = slider(0);
    ASSERT_TRUE(ringtone);
    const CGPoint start = thumbOnScreen(0);
    pointAt(start);
    user->press();
    user->moveTo(start.x + 100, start.y);
    ASSERT_TRUE(waitUntil([&] { return ringtone->isHighlighted() && ringtone->value() > 60; }));
    const double dragged = volume("Ringtone");
    EXPECT_NEAR(dragged, double{ringtone->value()} / 100, 0.0001);
    user->release();
    EXPECT_TRUE(waitUntil([&] { return !ringtone->isHighlighted(); }));
    EXPECT_NEAR(volume("Ringtone"), dragged, 0.0001);
    EXPECT_NEAR(volume("Audio/Video"), 0.5, 0.0001);
    settle();
    EXPECT_TRUE(thumbIsSeenAt(thumbOnScreen(0)));
}

TEST_F(DesktopWindowTest, PressOnTheTrackBringsTheThumbThere) {
    open();
    const CGRect track = slider(1)->trackRect();
    pointAt(onScreen(*slider(1), {CGRectGetMaxX(track) - 1, CGRectGetMidY(track)}));
    user->click();
    expectVolume("Audio/Video", 1);
}

TEST_F(DesktopWindowTest, GearAndCtrlCommaCallForTheSettings) {
    int calls = 0;
    open();
    window->setSettingsHandler([&] { ++calls; });
    window->setFooter(std::nullopt);
    settle();
    pointAt({windowOrigin().x + 12, windowOrigin().y + 12});
    user->click();
    EXPECT_TRUE(waitUntil([&] { return calls == 1; }));
    user->pressKey(XK_Control_L);
    user->typeKey(XK_comma);
    user->releaseKey(XK_Control_L);
    EXPECT_TRUE(waitUntil([&] { return calls == 2; }));
    user->typeKey(XK_comma);
    settle();
    EXPECT_EQ(calls, 2);
}

TEST_F(DesktopWindowTest, ChangeElsewhereMovesTheThumbOnTheScreen) {
    open();
    const CGPoint before = thumbOnScreen(0);
    ASSERT_TRUE(thumbIsSeenAt(before));
    device->changeVolume("Ringtone", 0.9F);
    ASSERT_TRUE(waitUntil([this] { return std::abs(slider(0)->value() - 90) < 0.01F; }));
    settle();
    EXPECT_TRUE(thumbIsSeenAt(thumbOnScreen(0)));
    EXPECT_FALSE(thumbIsSeenAt(before));
}

TEST_F(DesktopWindowTest, KeyMMutesTheFocusedRowsCategoryAndKeepsItsVolume) {
    using Level = AVSystemController::Level;
    using Mute = AVSystemController::Mute;
    open();
    pointAt({windowOrigin().x + 5, windowOrigin().y + 100});
    const auto hasLevel = [this](const Level& level) {
        return waitUntil([&] { return device->levelOf("Audio/Video") == level; });
    };
    user->typeKey(XK_m);
    settle();
    EXPECT_TRUE(hasLevel({0.5F, Mute::Off})) << "no row has the focus yet";
    user->typeKey(XK_Tab);
    user->typeKey(XK_Tab);
    ASSERT_TRUE(waitUntil([this] { return slider(1)->isFocused(); }));
    user->pressKey(XK_m);
    EXPECT_TRUE(hasLevel({0.5F, Mute::On}));
    EXPECT_TRUE(waitUntil([this] { return slider(1)->value() == 0; }));
    constexpr gint64 longerThanKeysAreRepeatedAfter = 900000;  // microseconds
    const gint64 end = g_get_monotonic_time() + longerThanKeysAreRepeatedAfter;
    EXPECT_TRUE(waitUntil([&] {
        EXPECT_EQ(device->levelOf("Audio/Video")->mute, Mute::On) << "a held key is one press";
        return g_get_monotonic_time() > end;
    }));
    user->releaseKey(XK_m);
    user->typeKey(XK_m);
    EXPECT_TRUE(hasLevel({0.5F, Mute::Off}));
    EXPECT_TRUE(waitUntil([this] { return slider(1)->value() == 50; }));
    EXPECT_EQ(device->levelOf("Ringtone"), (Level{0.5F, Mute::Off}));
    user->pressKey(XK_Control_L);
    user->typeKey(XK_m);
    user->releaseKey(XK_Control_L);
    settle();
    EXPECT_EQ(device->levelOf("Audio/Video"), (Level{0.5F, Mute::Off}));
}

TEST_F(DesktopWindowTest, EscapeClosesAndDismisses) {
    open();
    bool told = false;
    window->setCloseHandler([&told] { told = true; });
    pointAt({windowOrigin().x + 5, windowOrigin().y + 100});
    user->typeKey(XK_Escape);
    EXPECT_TRUE(waitUntil([&told] { return told; }));
    EXPECT_FALSE(window->isShown());
    EXPECT_FALSE(gdk_window_is_visible(window->host().window()));
    EXPECT_EQ(slider(0), nullptr);
}

TEST_F(DesktopWindowTest, WindowManagerClosesAndDismisses) {
    open();
    user->closeWindow(gdk_x11_window_get_xid(window->host().window()));
    EXPECT_TRUE(waitUntil([this] { return !window->isShown(); }));
}

TEST_F(DesktopWindowTest, MayBeDestroyedByItsCloseHandler) {
    open();
    window->setCloseHandler([this] { window.reset(); });
    user->closeWindow(gdk_x11_window_get_xid(window->host().window()));
    EXPECT_TRUE(waitUntil([this] { return !window; }));
    EXPECT_FALSE(widget->isPresented());
}

TEST_F(DesktopWindowTest, ReopeningPresentsAndReadsTheFilesAgain) {
    open();
    EXPECT_EQ(windowSize(), (CGSize{560, 270}));
    window->close();
    files.writeShownCategories(3);
    device->nameCategory("Category2");  // A row without a volume is faint.
    window->show();
    EXPECT_TRUE(waitUntil([this] { return windowSize() == CGSize{560, 170}; }));
    settle();
    EXPECT_TRUE(widget->isPresented());
    ASSERT_TRUE(slider(2));
    EXPECT_EQ(slider(3), nullptr);
    EXPECT_TRUE(thumbIsSeenAt(thumbOnScreen(2)));
}

TEST_F(DesktopWindowTest, DragOfAnEmptyPartMovesTheWindow) {
    open();
    const CGPoint origin = windowOrigin();
    user->moveTo(origin.x + 300, origin.y + 8);
    user->press();
    user->moveTo(origin.x + 310, origin.y + 18);
    settle();
    user->moveTo(origin.x + 360, origin.y + 58);
    EXPECT_TRUE(waitUntil([&] {
        return windowOrigin() == CGPoint{origin.x + 60, origin.y + 50};
    })) << windowOrigin().x
        << "," << windowOrigin().y;
    user->release();
    settle();
    EXPECT_NEAR(volume("Ringtone"), 0.5, 0.0001);
}

TEST_F(DesktopWindowTest, CrossInTheCornerClosesIt) {
    open();
    const CGPoint origin = windowOrigin();
    user->moveTo(origin.x + windowSize().width - 12, origin.y + 12);
    user->click();
    EXPECT_TRUE(waitUntil([this] { return !window->isShown(); }));
}

TEST_F(DesktopWindowTest, DrawerThatAPressBesideItClosesHasNoCross) {
    open();
    const auto buttons = [this] {
        const auto elements = accessibilityElements(window->content());
        return std::ranges::count_if(elements, [](const auto& element) {
            return std::dynamic_pointer_cast<UIButton>(element) != nullptr;
        });
    };
    EXPECT_EQ(buttons(), 1);
    window->close();
    window->show(std::make_unique<PopupPlace>(gdk_display_get_default(), CGPoint{640, 15}, 8));
    settle();
    EXPECT_TRUE(window->isShown());
    EXPECT_EQ(buttons(), 0);
}

TEST_F(DesktopWindowTest, GoesOnWhereABoundRowsPartnerIsNotInTheList) {
    files.writeSettings("<key>bindRingerAndAV</key><true/>");
    files.writeCategories({{"Audio/Video", "Media"}});
    open();
    device->changeVolume("Audio/Video", 0.9F);
    settle();
    EXPECT_TRUE(window->isShown());
    user->moveTo(thumbOnScreen(0).x, thumbOnScreen(0).y);
    user->scrollUp();
    EXPECT_TRUE(waitUntil([this] { return volume("Audio/Video") != 0.9F; }));
    settle();
    EXPECT_TRUE(window->isShown());
}

TEST_F(DesktopWindowTest, NothingWakesItWhenNothingHappens) {
    open();
    settle();
    bool over = false;
    const auto end = +[](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_REMOVE;
    };
    constexpr guint watchedTime = 300;  // milliseconds
    g_timeout_add(watchedTime, end, &over);
    int wakings = 0;
    while (!over) {
        g_main_context_iteration(nullptr, TRUE);
        ++wakings;
    }
    EXPECT_EQ(wakings, 1) << "besides the test's own timer";
}

/// GDK keeps a list of its windows at each change, which it never uses again.
void setPixelsToAPoint(int scale) {
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler uncounted;
#endif
    gdk_x11_display_set_window_scale(gdk_display_get_default(), scale);
}

TEST_F(DesktopWindowTest, IsCrispWhereAPointIsTwoPixels) {
    setPixelsToAPoint(2);
    open();
    EXPECT_EQ(windowSize(), (CGSize{560, 270}));
    // The panel's border is a hairline: one pixel, not two.
    settle();
    const std::uint32_t border = user->pixelAt(600, 0);
    const std::uint32_t inside = user->pixelAt(600, 1);
    EXPECT_GT(border & 0xFF, (inside & 0xFF) + 8);
    EXPECT_EQ(inside, user->pixelAt(600, 4));
    EXPECT_TRUE(thumbIsSeenAt(thumbOnScreen(4)));
    setPixelsToAPoint(1);
}

}  // namespace
}  // namespace test
