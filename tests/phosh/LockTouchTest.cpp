#include "tests/phosh/LockWidgetFixture.hpp"
#include "tests/rigs/Waiting.hpp"

namespace test {
namespace {

class LockTouchTest : public LockWidgetFixture {
 protected:
    LockTouchTest() { sound.startAndWait(); }
    /// With the values that the server has.
    void lockWithValues() {
        lockAtMixer();
        ASSERT_TRUE(rigs::waitUntil([] { return sliders()[1]->value() == 100; }));
    }
    float mediaValue() const { return sliders()[1]->value(); }
};

TEST_F(LockTouchTest, FingerOnASliderMovesItAndNoneOfItReachesTheLockScreen) {
    lockWithValues();
    const CGPoint middle = middleOf(*sliders()[1]);
    screen->touch(GDK_TOUCH_BEGIN, middle.x, middle.y);
    EXPECT_NEAR(mediaValue(), 50, 3);
    EXPECT_TRUE(sliders()[1]->isHighlighted());
    screen->touch(GDK_TOUCH_UPDATE, middle.x - 60, middle.y + 40);
    EXPECT_LT(mediaValue(), 35);
    screen->touch(GDK_TOUCH_END, middle.x - 60, middle.y + 40);
    EXPECT_FALSE(sliders()[1]->isHighlighted());
    for (const GdkEventType type : {GDK_TOUCH_BEGIN, GDK_TOUCH_UPDATE, GDK_TOUCH_END})
        EXPECT_EQ(screen->passedOn(type), 0U) << type;
    for (const GdkEventType type : {GDK_BUTTON_PRESS, GDK_MOTION_NOTIFY, GDK_BUTTON_RELEASE})
        EXPECT_EQ(screen->passedOn(type), 0U) << "emulated: " << type;
}

TEST_F(LockTouchTest, FingerBesideTheSlidersIsTheLockScreensFromItsBeginningToItsEnd) {
    lockWithValues();
    screen->touch(GDK_TOUCH_BEGIN, 180, 20);
    screen->touch(GDK_TOUCH_UPDATE, 100, 25);
    screen->touch(GDK_TOUCH_END, 100, 25);
    for (const GdkEventType type : {GDK_TOUCH_BEGIN, GDK_TOUCH_UPDATE, GDK_TOUCH_END})
        EXPECT_EQ(screen->passedOn(type), 1U) << type;
    EXPECT_EQ(mediaValue(), 100);
}

TEST_F(LockTouchTest, TwoFingersMoveTwoSliders) {
    lockWithValues();
    const CGPoint media = middleOf(*sliders()[1]);
    const CGPoint call = middleOf(*sliders()[4]);
    screen->touch(GDK_TOUCH_BEGIN, media.x, media.y, 1);
    screen->touch(GDK_TOUCH_BEGIN, call.x, call.y, 2);
    screen->touch(GDK_TOUCH_UPDATE, media.x - 60, media.y, 1);
    screen->touch(GDK_TOUCH_END, media.x - 60, media.y, 1);
    screen->touch(GDK_TOUCH_UPDATE, call.x + 60, call.y, 2);
    screen->touch(GDK_TOUCH_END, call.x + 60, call.y, 2);
    EXPECT_LT(mediaValue(), 35);
    EXPECT_GT(sliders()[4]->value(), 65);
}

TEST_F(LockTouchTest, LongListScrollsInsideThePageByADragUp) {
    files.writeShownCategories(20);
    lockAtMixer();
    ASSERT_EQ(sliders().size(), 20U);
    const CGFloat before = middleOf(*sliders()[0]).y;
    screen->touch(GDK_TOUCH_BEGIN, 10, 500);
    screen->touch(GDK_TOUCH_UPDATE, 10, 400);
    EXPECT_EQ(before - middleOf(*sliders()[0]).y, 100);
    EXPECT_EQ(screen->passedOn(GDK_TOUCH_UPDATE), 0U) << "it scrolls, and turns no page";
    screen->touch(GDK_TOUCH_END, 10, 400);
    EXPECT_EQ(screen->passedOn(GDK_TOUCH_END), 1U) << "or it would wait for that for ever";
}

TEST_F(LockTouchTest, LongListScrollsByASwipeAcrossASliderAndTheLockScreenHearsNothing) {
    files.writeShownCategories(20);
    lockAtMixer();
    const std::shared_ptr<UISlider> crossed = sliders()[5];
    const float before = crossed->value();
    const CGPoint from = middleOf(*crossed);
    screen->touch(GDK_TOUCH_BEGIN, from.x, from.y);
    screen->touch(GDK_TOUCH_UPDATE, from.x + 5, from.y - 60);
    screen->touch(GDK_TOUCH_END, from.x + 5, from.y - 60);
    EXPECT_EQ(crossed->value(), before);
    EXPECT_EQ(middleOf(*crossed).y, from.y - 60);
    for (const GdkEventType type : {GDK_TOUCH_BEGIN, GDK_TOUCH_UPDATE, GDK_TOUCH_END})
        EXPECT_EQ(screen->passedOn(type), 0U) << type;
}

TEST_F(LockTouchTest, PointerIsAFingerToo) {
    lockWithValues();
    const CGPoint middle = middleOf(*sliders()[1]);
    screen->pointer(GDK_BUTTON_PRESS, middle.x, middle.y);
    screen->pointer(GDK_MOTION_NOTIFY, middle.x - 60, middle.y);
    screen->pointer(GDK_BUTTON_RELEASE, middle.x - 60, middle.y);
    EXPECT_LT(mediaValue(), 35);
    for (const GdkEventType type : {GDK_BUTTON_PRESS, GDK_MOTION_NOTIFY, GDK_BUTTON_RELEASE})
        EXPECT_EQ(screen->passedOn(type), 0U) << type;
    screen->pointer(GDK_BUTTON_PRESS, 180, 20);
    screen->pointer(GDK_MOTION_NOTIFY, 100, 25);
    screen->pointer(GDK_BUTTON_RELEASE, 100, 25);
    for (const GdkEventType type : {GDK_BUTTON_PRESS, GDK_MOTION_NOTIFY, GDK_BUTTON_RELEASE})
        EXPECT_EQ(screen->passedOn(type), 1U) << type;
}

TEST_F(LockTouchTest, SliderThatIsHeldWhileThePageGoesIsLetGo) {
    lockWithValues();
    const std::shared_ptr<UISlider> held = sliders()[1];
    const CGPoint middle = middleOf(*held);
    screen->touch(GDK_TOUCH_BEGIN, middle.x, middle.y);
    ASSERT_TRUE(held->isHighlighted());
    screen->hide();
    EXPECT_FALSE(held->isHighlighted());
}

}  // namespace
}  // namespace test
