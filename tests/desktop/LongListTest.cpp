#include "platform/uikit/UIAccessibility.hpp"
#include "tests/desktop/DesktopFixture.hpp"

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

TEST_F(LongListTest, DragOfAnEmptyPartScrolls) {
    openLongList();
    const CGPoint origin = windowOrigin();
    const CGPoint caption = onScreen(*slider(10), {300, -10});
    const CGFloat before = thumbOnScreen(10).y;
    user->moveTo(caption.x, caption.y);
    user->press();
    user->moveTo(caption.x, caption.y - 50);
    settle();
    user->moveTo(caption.x, caption.y - 200);
    user->release();
    settle();
    EXPECT_NEAR(thumbOnScreen(10).y, before - 200, 5);
    EXPECT_EQ(windowOrigin(), origin);
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
    EXPECT_EQ(accessibilityLabel(*told.front()), "No categories to show");
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
