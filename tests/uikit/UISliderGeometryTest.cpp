#include "tests/support/FakeImageDecoder.hpp"
#include "tests/uikit/TestViews.hpp"

namespace {
class UISliderGeometry : public testing::Test {
 protected:
    InstalledFakeDecoder decoder;
    std::shared_ptr<UISlider> slider = std::make_shared<UISlider>(CGRectMake(20, 20, 280, 30));
};
}  // namespace

TEST_F(UISliderGeometry, HasAFourPointTrackInTheMiddle) {
    EXPECT_EQ(slider->trackRect(), CGRectMake(2, 13, 276, 4));
    EXPECT_EQ(slider->minimumImageRect(), CGRect{});
    EXPECT_EQ(slider->maximumImageRect(), CGRect{});
}

TEST_F(UISliderGeometry, KeepsTheWholeThumbWithinTwoPointsOfTheTrack) {
    EXPECT_EQ(slider->thumbRect(), CGRectMake(0, 1.5, 27, 27));
    slider->setValue(1);
    EXPECT_EQ(slider->thumbRect(), CGRectMake(253, 1.5, 27, 27));
    slider->setValue(0.5);
    EXPECT_EQ(slider->thumbRect(), CGRectMake(126.5, 1.5, 27, 27));
}

TEST_F(UISliderGeometry, LeavesEightPointsBetweenAnImageAndTheTrack) {
    slider->setMinimumValueImage(decoder.image("quiet.png", {18, 20}));
    slider->setMaximumValueImage(decoder.image("loud.png", {22, 16}));
    EXPECT_EQ(slider->minimumImageRect(), CGRectMake(0, 5, 18, 20));
    EXPECT_EQ(slider->maximumImageRect(), CGRectMake(258, 7, 22, 16));
    EXPECT_EQ(slider->trackRect(), CGRectMake(26, 13, 224, 4));
    EXPECT_EQ(slider->thumbRect().origin.x, 24);
    slider->setValue(1);
    EXPECT_EQ(CGRectGetMaxX(slider->thumbRect()), 252);
}

TEST_F(UISliderGeometry, TakesThumbAndTrackHeightFromImages) {
    slider->setThumbImage(decoder.image("thumb.png", {31, 31}), UIControlStateNormal);
    slider->setMinimumTrackImage(decoder.image("left.png", {20, 10}), UIControlStateNormal);
    EXPECT_EQ(slider->thumbRect(), CGRectMake(0, -0.5, 31, 31));
    EXPECT_EQ(slider->trackRect(), CGRectMake(2, 10, 276, 10));
}

TEST_F(UISliderGeometry, KeepsItsMiddleOnAHalfPointInAnOddHeight) {
    slider->setFrame(CGRectMake(0, 0, 280, 31.2));
    EXPECT_EQ(CGRectGetMidY(slider->trackRect()), 15.5);
    EXPECT_EQ(CGRectGetMidY(slider->thumbRect()), 15.5);
}

TEST_F(UISliderGeometry, PaintsAroundATallThumb) {
    slider->setThumbImage(decoder.image("thumb.png", {40, 60}), UIControlStateNormal);
    const auto window = makeWindow();
    window->addSubview(slider);
    for (const CGFloat needed : {0.5, 3.0}) {
        const CGRect area = slider->paintBounds();
        EXPECT_LE(area.origin.y, slider->thumbRect().origin.y - needed);
        EXPECT_GE(CGRectGetMaxY(area), CGRectGetMaxY(slider->thumbRect()) + needed);
        EXPECT_LE(area.origin.x, slider->thumbRect().origin.x - needed);
        window->sendKey(UIKey::Tab);  // The ring.
    }
}

TEST_F(UISliderGeometry, PaintsAroundAHighlightedThumbBeforeItIsOne) {
    slider->setThumbImage(decoder.image("thumb.png", {40, 60}), UIControlStateHighlighted);
    EXPECT_LE(slider->paintBounds().origin.y, -15);
    slider->setHighlighted(true);
    EXPECT_EQ(slider->thumbRect().size.height, 60);
}

TEST_F(UISliderGeometry, GivesEmptyRectanglesToASliderTooNarrow) {
    slider->setMinimumValueImage(decoder.image("quiet.png", {20, 20}));
    slider->setMaximumValueImage(decoder.image("loud.png", {20, 20}));
    for (CGFloat width = -50; width < 120; width += 0.5) {
        slider->setFrame(CGRectMake(0, 0, width, 30));
        for (const CGRect& rect : {slider->trackRect(), slider->thumbRect(),
                                   slider->minimumImageRect(), slider->maximumImageRect()}) {
            EXPECT_GE(rect.size.width, 0) << width;
            EXPECT_GE(rect.size.height, 0) << width;
            if (CGRectIsEmpty(rect)) continue;
            EXPECT_GE(rect.origin.x, 0) << width;
            EXPECT_LE(CGRectGetMaxX(rect), width) << width;
        }
    }
}

TEST_F(UISliderGeometry, HasAThumbFromTheWidthOnThatHoldsIt) {
    slider->setFrame(CGRectMake(0, 0, 26.5, 30));
    EXPECT_TRUE(CGRectIsEmpty(slider->thumbRect()));
    slider->setFrame(CGRectMake(0, 0, 27, 30));
    EXPECT_EQ(slider->thumbRect(), CGRectMake(0, 1.5, 27, 27));
    slider->setFrame(CGRectMake(0, 0, 4, 30));
    EXPECT_TRUE(CGRectIsEmpty(slider->trackRect()));
}

TEST_F(UISliderGeometry, IsEmptyWithoutHeight) {
    slider->setFrame(CGRectMake(0, 0, 280, 0));
    EXPECT_EQ(slider->trackRect(), CGRect{});
    EXPECT_EQ(slider->thumbRect(), CGRect{});
    EXPECT_TRUE(CGRectIsEmpty(slider->paintBounds()));
}

TEST_F(UISliderGeometry, StandsAtTheLeftInARangeTheWrongWayRound) {
    slider->setMinimumValue(5);
    EXPECT_EQ(slider->value(), 5);
    EXPECT_EQ(slider->thumbRect().origin.x, 0);
}
