#include "backends/gdk/InputTranslator.hpp"
#include "tests/gdk/InputEvents.hpp"

#include <gdk/gdkkeysyms.h>
#include <gtest/gtest.h>

namespace {

using Log = std::vector<std::string>;

class GdkInputTest : public testing::Test {
 protected:
    GdkInputTest() {
        content->addSubview(left);
        content->addSubview(right);
    }

    bool send(const GdkEvent& event) { return input.handle(event); }

    std::shared_ptr<UIWindow> content = std::make_shared<UIWindow>(CGRectMake(0, 0, 200, 100));
    std::shared_ptr<InputRecorder> left =
        std::make_shared<InputRecorder>(CGRectMake(0, 0, 100, 100));
    std::shared_ptr<InputRecorder> right =
        std::make_shared<InputRecorder>(CGRectMake(100, 0, 100, 100));
    windowing::InputTranslator input{content};
};

TEST_F(GdkInputTest, TurnsAPressedPointerIntoATouch) {
    EXPECT_TRUE(send(buttonEvent(GDK_BUTTON_PRESS, 10, 20)));
    EXPECT_TRUE(send(motionEvent(150, 30)));
    EXPECT_TRUE(send(buttonEvent(GDK_BUTTON_RELEASE, 12, 22)));
    EXPECT_EQ(left->log, (Log{"began 10,20", "moved 150,30", "ended 12,22"}));
    EXPECT_EQ(right->log, Log{});
}

TEST_F(GdkInputTest, LeavesAPointerThatIsNotPressedAlone) {
    EXPECT_FALSE(send(motionEvent(10, 20)));
    EXPECT_FALSE(send(buttonEvent(GDK_BUTTON_RELEASE, 10, 20)));
    EXPECT_EQ(left->log, Log{});
}

TEST_F(GdkInputTest, KnowsThePrimaryButtonOnly) {
    EXPECT_FALSE(send(buttonEvent(GDK_BUTTON_PRESS, 10, 20, GDK_BUTTON_SECONDARY)));
    send(buttonEvent(GDK_BUTTON_PRESS, 10, 20));
    EXPECT_FALSE(send(buttonEvent(GDK_BUTTON_RELEASE, 10, 20, GDK_BUTTON_MIDDLE)));
    EXPECT_EQ(left->log, Log{"began 10,20"});
}

TEST_F(GdkInputTest, TakesADoubleClickForNoThirdPress) {
    send(buttonEvent(GDK_BUTTON_PRESS, 10, 20));
    EXPECT_FALSE(send(buttonEvent(GDK_2BUTTON_PRESS, 10, 20)));
    EXPECT_FALSE(send(buttonEvent(GDK_3BUTTON_PRESS, 10, 20)));
    EXPECT_EQ(left->log, Log{"began 10,20"});
}

TEST_F(GdkInputTest, RemembersWhereOnTheScreenThePressWas) {
    EXPECT_EQ(input.lastPress().time, 0U);
    send(buttonEvent(GDK_BUTTON_PRESS, 10, 20));
    EXPECT_EQ(input.lastPress().rootX, 1010);
    EXPECT_EQ(input.lastPress().rootY, 2020);
    EXPECT_EQ(input.lastPress().button, 1);
    EXPECT_EQ(input.lastPress().time, 77U);
}

TEST_F(GdkInputTest, FollowsTwoFingersOnTwoViewsAtOnce) {
    send(touchEvent(GDK_TOUCH_BEGIN, 0, 10, 10));
    send(touchEvent(GDK_TOUCH_BEGIN, 1, 110, 10));
    send(touchEvent(GDK_TOUCH_UPDATE, 0, 20, 10));
    send(touchEvent(GDK_TOUCH_UPDATE, 1, 130, 10));
    send(touchEvent(GDK_TOUCH_END, 0, 20, 10));
    send(touchEvent(GDK_TOUCH_END, 1, 130, 10));
    EXPECT_EQ(left->log, (Log{"began 10,10", "moved 20,10", "ended 20,10"}));
    EXPECT_EQ(right->log, (Log{"began 10,10", "moved 30,10", "ended 30,10"}));
}

TEST_F(GdkInputTest, TellsAFingerFromThePointer) {
    send(buttonEvent(GDK_BUTTON_PRESS, 10, 10));
    send(touchEvent(GDK_TOUCH_BEGIN, 0, 110, 10));
    send(buttonEvent(GDK_BUTTON_RELEASE, 11, 10));
    send(touchEvent(GDK_TOUCH_END, 0, 120, 10));
    EXPECT_EQ(left->log, (Log{"began 10,10", "ended 11,10"}));
    EXPECT_EQ(right->log, (Log{"began 10,10", "ended 20,10"}));
}

TEST_F(GdkInputTest, SaysWhichTouchesAreFingers) {
    struct TypeRecorder : UIView {
        using UIView::UIView;
        void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>&) override {
            types.push_back(touches.front()->type());
        }
        std::vector<UITouchType> types;
    };
    const auto recorder = std::make_shared<TypeRecorder>(CGRectMake(0, 0, 100, 100));
    content->addSubview(recorder);
    send(buttonEvent(GDK_BUTTON_PRESS, 10, 10));
    send(touchEvent(GDK_TOUCH_BEGIN, 0, 10, 10));
    EXPECT_EQ(recorder->types,
              (std::vector<UITouchType>{UITouchType::IndirectPointer, UITouchType::Direct}));
}

TEST_F(GdkInputTest, GivesAFreedFingersNumberToTheNextWithoutMixingThemUp) {
    send(touchEvent(GDK_TOUCH_BEGIN, 0, 10, 10));
    send(touchEvent(GDK_TOUCH_BEGIN, 1, 110, 10));
    send(touchEvent(GDK_TOUCH_END, 0, 10, 10));
    send(touchEvent(GDK_TOUCH_BEGIN, 2, 30, 10));
    send(touchEvent(GDK_TOUCH_END, 1, 110, 10));
    send(touchEvent(GDK_TOUCH_END, 2, 30, 10));
    EXPECT_EQ(left->log, (Log{"began 10,10", "ended 10,10", "began 30,10", "ended 30,10"}));
    EXPECT_EQ(right->log, (Log{"began 10,10", "ended 10,10"}));
}

TEST_F(GdkInputTest, CancelsATouchThatTheSystemTakesOver) {
    send(touchEvent(GDK_TOUCH_BEGIN, 0, 10, 10));
    EXPECT_TRUE(send(touchEvent(GDK_TOUCH_CANCEL, 0, 10, 10)));
    EXPECT_FALSE(send(touchEvent(GDK_TOUCH_UPDATE, 0, 20, 10)));
    EXPECT_EQ(left->log, (Log{"began 10,10", "cancelled 10,10"}));
}

TEST_F(GdkInputTest, IgnoresAFingerWhoseBeginningItHasNotSeen) {
    EXPECT_FALSE(send(touchEvent(GDK_TOUCH_UPDATE, 0, 10, 10)));
    EXPECT_FALSE(send(touchEvent(GDK_TOUCH_END, 0, 10, 10)));
    EXPECT_EQ(left->log, Log{});
}

TEST_F(GdkInputTest, CancelsEverythingWhenAnotherProgramTakesThePointer) {
    send(buttonEvent(GDK_BUTTON_PRESS, 10, 10));
    EXPECT_TRUE(send(leaveEvent(GDK_CROSSING_GRAB)));
    EXPECT_FALSE(send(motionEvent(20, 10)));
    EXPECT_EQ(left->log, (Log{"began 10,10", "cancelled 10,10"}));
}

TEST_F(GdkInputTest, GoesOnWhenAPressedPointerOnlyLeavesTheWindow) {
    send(buttonEvent(GDK_BUTTON_PRESS, 10, 10));
    EXPECT_FALSE(send(leaveEvent(GDK_CROSSING_NORMAL)));
    send(motionEvent(-30, 10));
    EXPECT_EQ(left->log, (Log{"began 10,10", "moved -30,10"}));
}

TEST_F(GdkInputTest, CancelsWhenTheGrabIsBroken) {
    send(touchEvent(GDK_TOUCH_BEGIN, 0, 10, 10));
    GdkEvent broken = {};
    broken.grab_broken.type = GDK_GRAB_BROKEN;
    EXPECT_TRUE(send(broken));
    EXPECT_EQ(left->log, (Log{"began 10,10", "cancelled 10,10"}));
}

TEST_F(GdkInputTest, CountsAWheelsClickAsAStepAndTenWithShift) {
    send(wheelEvent(GDK_SCROLL_UP));
    send(wheelEvent(GDK_SCROLL_DOWN));
    send(wheelEvent(GDK_SCROLL_UP, GDK_SHIFT_MASK));
    send(wheelEvent(GDK_SCROLL_RIGHT));
    send(wheelEvent(GDK_SCROLL_LEFT, GDK_SHIFT_MASK));
    EXPECT_EQ(left->log,
              (Log{"scrolled 1", "scrolled -1", "scrolled 10", "scrolled 1", "scrolled -10"}));
}

TEST_F(GdkInputTest, KeepsTheFractionsOfSmoothScrolling) {
    send(smoothEvent(0, -0.25));
    send(smoothEvent(0, 0.5, GDK_SHIFT_MASK));
    EXPECT_EQ(left->log, (Log{"scrolled 0.25", "scrolled -5"}));
}

TEST_F(GdkInputTest, FollowsTheStrongerDirectionOfATouchpad) {
    send(smoothEvent(0.75, -0.25));
    send(smoothEvent(-0.25, -0.75));
    EXPECT_EQ(left->log, (Log{"scrolled 0.75", "scrolled 0.75"}));
}

TEST_F(GdkInputTest, IgnoresTheEventThatEndsATouchpadsGesture) {
    EXPECT_FALSE(send(smoothEvent(0, 0)));
    EXPECT_EQ(left->log, Log{});
}

TEST_F(GdkInputTest, SendsKeysToTheFocusedView) {
    EXPECT_TRUE(send(keyEvent(GDK_KEY_Tab)));
    EXPECT_TRUE(send(keyEvent(GDK_KEY_End)));
    EXPECT_TRUE(send(keyEvent(GDK_KEY_Tab)));
    EXPECT_TRUE(send(keyEvent(GDK_KEY_Home)));
    EXPECT_EQ(left->log, Log{"key " + std::to_string(int(UIKey::End))});
    EXPECT_EQ(right->log, Log{"key " + std::to_string(int(UIKey::Home))});
}

TEST_F(GdkInputTest, LeavesOtherKeysToTheShell) {
    EXPECT_FALSE(send(keyEvent(GDK_KEY_Escape)));
    EXPECT_FALSE(send(keyEvent(GDK_KEY_a)));
}

struct KeyCase {
    guint keyval;
    guint state;
    std::optional<UIKey> key;
};

class GdkKeysTest : public testing::TestWithParam<KeyCase> {};

TEST_P(GdkKeysTest, MapsAKey) {
    EXPECT_EQ(windowing::keyOf(keyEvent(GetParam().keyval, GetParam().state).key), GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(
    All, GdkKeysTest,
    testing::Values(
        KeyCase{GDK_KEY_Tab, 0, UIKey::Tab}, KeyCase{GDK_KEY_Tab, GDK_SHIFT_MASK, UIKey::BackTab},
        KeyCase{GDK_KEY_ISO_Left_Tab, GDK_SHIFT_MASK, UIKey::BackTab},
        KeyCase{GDK_KEY_Left, 0, UIKey::Left}, KeyCase{GDK_KEY_KP_Left, GDK_MOD2_MASK, UIKey::Left},
        KeyCase{GDK_KEY_Right, 0, UIKey::Right}, KeyCase{GDK_KEY_Up, 0, UIKey::Up},
        KeyCase{GDK_KEY_Down, 0, UIKey::Down}, KeyCase{GDK_KEY_Page_Up, 0, UIKey::PageUp},
        KeyCase{GDK_KEY_KP_Page_Down, 0, UIKey::PageDown}, KeyCase{GDK_KEY_Home, 0, UIKey::Home},
        KeyCase{GDK_KEY_End, 0, UIKey::End}, KeyCase{GDK_KEY_Return, 0, UIKey::Press},
        KeyCase{GDK_KEY_KP_Enter, 0, UIKey::Press}, KeyCase{GDK_KEY_space, 0, UIKey::Press},
        KeyCase{GDK_KEY_space, GDK_MOD1_MASK, std::nullopt},
        KeyCase{GDK_KEY_Right, GDK_CONTROL_MASK, std::nullopt},
        KeyCase{GDK_KEY_Tab, GDK_MOD1_MASK, std::nullopt},
        KeyCase{GDK_KEY_Left, GDK_SUPER_MASK, std::nullopt}, KeyCase{GDK_KEY_1, 0, std::nullopt}));

}  // namespace
