#include "platform/uikit/UIView.hpp"
#include "tests/desktop/DesktopFixture.hpp"
#include "tests/support/VirtualClock.hpp"

#include <X11/keysym.h>

namespace test {
namespace {

class LongListTest : public DesktopFixture {
 protected:
    static constexpr int rows = 100;
    static constexpr CGFloat screenHeight = 900;

    void openLongList() {
        files.writeShownCategories(rows);
        open();
    }
    /// Of a finger, which no device of this screen's is; in points of the window.
    void touch(GdkEventType type, const CGPoint& point) {
        GdkEvent* event = gdk_event_new(type);
        event->touch.window = GDK_WINDOW(g_object_ref(window->host().window()));
        event->touch.sequence = reinterpret_cast<GdkEventSequence*>(this);
        event->touch.x = static_cast<double>(point.x);
        event->touch.y = static_cast<double>(point.y);
        gdk_event_put(event);
        gdk_event_free(event);
    }
    CGPoint thumbInWindow(std::size_t row) const {
        const CGPoint onScreen = thumbOnScreen(row);
        return {onScreen.x - windowOrigin().x, onScreen.y - windowOrigin().y};
    }
    bool isOnPanel(std::size_t row) const {
        const CGFloat y = thumbOnScreen(row).y - windowOrigin().y;
        return y > 0 && y < windowSize().height;
    }
};

TEST_F(LongListTest, StaysOnTheScreen) {
    openLongList();
    EXPECT_LE(windowSize().height, screenHeight);
    EXPECT_GT(windowSize().height, screenHeight / 2);
    EXPECT_TRUE(isOnPanel(0));
    EXPECT_FALSE(isOnPanel(rows - 1));
}

TEST_F(LongListTest, WheelOverAnEmptyPartScrolls) {
    openLongList();
    const CGPoint caption = onScreen(*slider(2), {200, -10});
    user->moveTo(caption.x, caption.y);
    for (int i = 0; i < rows * 2; ++i)
        user->scrollDown();
    EXPECT_TRUE(waitUntil([this] { return isOnPanel(rows - 1); }));
    EXPECT_FALSE(isOnPanel(0));
    for (int i = 0; i < rows * 2; ++i)
        user->scrollUp();
    EXPECT_TRUE(waitUntil([this] { return isOnPanel(0); }));
}

TEST_F(LongListTest, FingerThatSwipesAcrossASliderScrollsAndSetsNothing) {
    openLongList();
    const VirtualClock still;
    const CGPoint thumb = thumbInWindow(5);
    const float value = slider(5)->value();
    const CGPoint beside = {thumb.x + 60, thumb.y};
    touch(GDK_TOUCH_BEGIN, beside);
    touch(GDK_TOUCH_UPDATE, {beside.x + 3, beside.y - 30});
    touch(GDK_TOUCH_UPDATE, {beside.x + 3, beside.y - 80});
    touch(GDK_TOUCH_END, {beside.x + 3, beside.y - 80});
    settle();
    EXPECT_EQ(slider(5)->value(), value);
    EXPECT_EQ(thumbInWindow(5), (CGPoint{thumb.x, thumb.y - 80}));
}

TEST_F(LongListTest, FocusIsScrolledIntoSight) {
    openLongList();
    user->moveTo(windowOrigin().x + 5, windowOrigin().y + 100);
    user->pressKey(XK_Shift_L);
    user->typeKey(XK_Tab);
    user->releaseKey(XK_Shift_L);
    ASSERT_TRUE(waitUntil([this] { return slider(rows - 1)->isFocused(); }));
    EXPECT_TRUE(waitUntil([this] { return isOnPanel(rows - 1); }));
    user->typeKey(XK_Tab);
    EXPECT_TRUE(waitUntil([this] { return slider(0)->isFocused() && isOnPanel(0); }));
}

TEST_F(LongListTest, EmptyListShowsASmallPanelThatSaysSo) {
    files.writeCategories({});
    open();
    EXPECT_EQ(windowSize().width, 560);
    EXPECT_GE(windowSize().height, 48);
    EXPECT_LE(windowSize().height, 120);
    EXPECT_EQ(slider(0), nullptr);
    const auto told = accessibilityElements(window->content());
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told.front()->accessibilityLabel(), "No categories to show");
    EXPECT_GT(user->coloursIn(CGRectMake(windowOrigin().x + 100, windowOrigin().y + 10, 360, 60)),
              2U);
}

TEST_F(LongListTest, FollowsAListThatIsEmptiedOrFilledWhileTheWindowIsOpen) {
    files.writeCategories({});
    open();
    const auto showAnew = [this] {
        widget->dismiss();
        widget->present();
        settle();
    };
    files.writeShownCategories(2);
    showAnew();
    EXPECT_TRUE(slider(1));
    EXPECT_EQ(windowSize(), (CGSize{560, 120}));
    files.writeCategories({});
    showAnew();
    EXPECT_EQ(slider(0), nullptr);
    EXPECT_FALSE(accessibilityElements(window->content()).empty());
}

}  // namespace
}  // namespace test
