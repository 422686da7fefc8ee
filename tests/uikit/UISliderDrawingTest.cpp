#include "tests/support/FakeImageDecoder.hpp"
#include "tests/support/RecordingCanvas.hpp"
#include "tests/uikit/TestViews.hpp"

#include <cmath>

namespace {
constexpr UIColor systemBlue = UIColor::colorWithRed(0, 122.0 / 255, 1, 1);

class UISliderDrawing : public SliderTest {
 protected:
    UISliderDrawing() { slider->setValue(50); }
    RecordingCanvas painted(CGFloat scale = 1) {
        RecordingCanvas canvas(scale);
        window->layoutAndPaint(canvas, window->bounds());
        EXPECT_EQ(canvas.depth(), 0);
        window->takeDamage();
        return canvas;
    }
    static std::string path(const RecordingCanvas::Operation& operation) {
        return static_cast<const FakeBitmap&>(*operation.bitmap).path();
    }
    InstalledFakeDecoder decoder;
};
}  // namespace

TEST_F(UISliderDrawing, HasThePlatformsOwnTrackAndThumb) {
    const RecordingCanvas canvas = painted();
    const auto rounded = canvas.ofKind("rounded");
    ASSERT_EQ(rounded.size(), 3U);
    const CGRect track = CGRectMake(22, 33, 276, 4);
    EXPECT_EQ(rounded[0].rect, track);
    EXPECT_EQ(rounded[0].clip.origin.x, 160);
    EXPECT_GT(rounded[0].color.alpha, 0);
    EXPECT_LT(rounded[0].color.alpha, 1);
    EXPECT_EQ(rounded[1].rect, track);
    EXPECT_EQ(rounded[1].radius, 2);
    EXPECT_EQ(CGRectGetMaxX(rounded[1].clip), 160);
    EXPECT_EQ(rounded[1].color, systemBlue);
    EXPECT_EQ(rounded[2].rect.size, (CGSize{27, 27}));
    EXPECT_EQ(rounded[2].radius, 13.5);
    EXPECT_EQ(rounded[2].color, UIColor::whiteColor());
    EXPECT_EQ(canvas.ofKind("shadow").size(), 1U);
    EXPECT_TRUE(canvas.ofKind("stroke").empty());
    EXPECT_TRUE(canvas.ofKind("bitmap").empty());
}

TEST_F(UISliderDrawing, DrawsNothingThatCannotBeSeen) {
    slider->setMinimumValueImage(decoder.image("quiet.png", {12, 20}));
    slider->setMaximumValueImage(decoder.image("loud.png", {20, 20}));
    window->takeDamage();
    slider->setValue(75);
    const std::vector<CGRect> moved = window->takeDamage();
    ASSERT_EQ(moved.size(), 1U);
    RecordingCanvas canvas;
    canvas.clip(moved.front());
    window->layoutAndPaint(canvas, window->bounds());
    EXPECT_TRUE(canvas.ofKind("bitmap").empty()) << "the images at the ends stand still";
    EXPECT_EQ(canvas.ofKind("rounded").size(), 3U);
}

TEST_F(UISliderDrawing, DrawsNoTrackWhereTheEdgeBelowItAloneIsSeen) {
    window->takeDamage();
    RecordingCanvas canvas;
    canvas.clip(CGRectMake(0, 45, 320, 5));
    window->layoutAndPaint(canvas, window->bounds());
    const auto rounded = canvas.ofKind("rounded");
    ASSERT_EQ(rounded.size(), 1U);
    EXPECT_EQ(rounded[0].rect.size, (CGSize{27, 27})) << "the thumb reaches down to there";
}

TEST_F(UISliderDrawing, StaysWithinItsPaintBounds) {
    window->sendKey(UIKey::Tab);
    slider->setThumbImage(decoder.image("thumb.png", {31, 31}), UIControlStateNormal);
    for (const float value : {0.0F, 100.0F}) {
        slider->setValue(value);
        const CGRect area = CGRectOffset(slider->paintBounds(), 20, 20);
        const RecordingCanvas canvas = painted();
        for (const auto& operation : canvas.operations()) {
            const CGFloat blur = operation.kind == "shadow" ? operation.width : 0;
            const CGRect reach = CGRectInset(operation.rect, -blur, -blur);
            EXPECT_EQ(CGRectUnion(area, reach), area) << operation.kind;
        }
    }
}

TEST_F(UISliderDrawing, IsColouredByItsTints) {
    slider->setMinimumTrackTintColor(UIColor::redColor());
    slider->setMaximumTrackTintColor(UIColor::greenColor());
    slider->setThumbTintColor(UIColor::yellowColor());
    const auto rounded = painted().ofKind("rounded");
    EXPECT_EQ(rounded.at(0).color, UIColor::greenColor());
    EXPECT_EQ(rounded.at(1).color, UIColor::redColor());
    EXPECT_EQ(rounded.at(2).color, UIColor::yellowColor());
    slider->setMinimumTrackTintColor(std::nullopt);
    EXPECT_EQ(painted().ofKind("rounded").at(1).color, systemBlue);
}

TEST_F(UISliderDrawing, IsPaintedAgainOnlyForAnotherTintOrImage) {
    slider->setThumbTintColor(UIColor::yellowColor());
    const auto image = decoder.image("thumb.png", {31, 31});
    slider->setThumbImage(image, UIControlStateNormal);
    painted();
    slider->setThumbTintColor(UIColor::yellowColor());
    slider->setThumbImage(image, UIControlStateNormal);
    slider->setMinimumValueImage(nullptr);
    EXPECT_TRUE(window->damage().empty());
    slider->setThumbTintColor(std::nullopt);
    EXPECT_FALSE(window->takeDamage().empty());
    slider->setThumbImage(nullptr, UIControlStateNormal);
    EXPECT_FALSE(window->takeDamage().empty());
}

TEST_F(UISliderDrawing, DamagesOnlyAroundTheThumbForANewValue) {
    painted();
    slider->setValue(51);
    const auto damage = window->takeDamage();
    ASSERT_EQ(damage.size(), 1U);
    EXPECT_LE(damage[0].size.width, 27 + 2 * 5 + 2.53 + 2);
    EXPECT_GE(damage[0].size.width, 29.5);
    slider->setValue(51);
    EXPECT_TRUE(window->damage().empty());
}

TEST_F(UISliderDrawing, DrawsTrackImagesAtFullWidthCutAtTheThumb) {
    for (const char* name : {"left.png", "right.png"}) {
        const auto image = decoder.image(name, {20, 10})->resizableImageWithCapInsets({0, 9, 0, 9});
        if (std::string(name) == "left.png")
            slider->setMinimumTrackImage(image, UIControlStateNormal);
        else
            slider->setMaximumTrackImage(image, UIControlStateNormal);
    }
    for (const float value : {0.0F, 50.0F, 100.0F}) {
        slider->setValue(value);
        const CGFloat centre = 20 + CGRectGetMidX(slider->thumbRect());
        const auto bitmaps = painted().ofKind("bitmap");
        ASSERT_EQ(bitmaps.size(), 6U) << value;
        for (const std::size_t first : {0U, 3U}) {
            EXPECT_EQ(bitmaps[first].rect, CGRectMake(22, 30, 9, 10));
            EXPECT_EQ(CGRectGetMaxX(bitmaps[first + 2].rect), 298);
        }
        EXPECT_EQ(path(bitmaps[0]), "right.png");
        EXPECT_NEAR(bitmaps[0].clip.origin.x, centre, 0.5);
        EXPECT_EQ(path(bitmaps[3]), "left.png");
        EXPECT_NEAR(CGRectGetMaxX(bitmaps[3].clip), centre, 0.5);
    }
}

TEST_F(UISliderDrawing, DrawsAThumbImageOnWholePixelsMultipliedByItsTint) {
    slider->setThumbImage(decoder.image("thumb.png", {31, 31}), UIControlStateNormal);
    slider->setValue(33);
    auto bitmaps = painted().ofKind("bitmap");
    ASSERT_EQ(bitmaps.size(), 1U);
    EXPECT_EQ(bitmaps[0].rect.size, (CGSize{31, 31}));
    EXPECT_EQ(bitmaps[0].rect.origin.x, std::round(bitmaps[0].rect.origin.x));
    EXPECT_EQ(bitmaps[0].rect.origin.y, std::round(bitmaps[0].rect.origin.y));
    EXPECT_EQ(bitmaps[0].multiply, std::nullopt);
    slider->setThumbTintColor(UIColor::redColor());
    EXPECT_EQ(painted().ofKind("bitmap").at(0).multiply, UIColor::redColor());
    slider->setThumbTintColor(UIColor::whiteColor());
    EXPECT_EQ(painted().ofKind("bitmap").at(0).multiply, std::nullopt);
    EXPECT_TRUE(painted().ofKind("shadow").empty());
}

TEST_F(UISliderDrawing, ShowsTheHighlightedImagesWhileHeldOrElseTheNormalOnes) {
    const auto normal = decoder.image("thumb.png", {31, 31});
    const auto active = decoder.image("active.png", {31, 31});
    const auto track = decoder.image("right.png", {20, 10});
    slider->setThumbImage(normal, UIControlStateNormal);
    slider->setThumbImage(active, UIControlStateHighlighted);
    slider->setMaximumTrackImage(track, UIControlStateNormal);
    EXPECT_EQ(slider->thumbImage(UIControlStateHighlighted), active);
    EXPECT_EQ(slider->maximumTrackImage(UIControlStateHighlighted), nullptr);
    slider->setHighlighted(true);
    const auto bitmaps = painted().ofKind("bitmap");
    EXPECT_EQ(path(bitmaps.front()), "right.png");
    EXPECT_EQ(path(bitmaps.back()), "active.png");
    slider->setHighlighted(false);
    EXPECT_EQ(path(painted().ofKind("bitmap").back()), "thumb.png");
}

TEST_F(UISliderDrawing, ShadesAHeldThumbThatHasNoImageForThat) {
    slider->setThumbImage(decoder.image("thumb.png", {31, 31}), UIControlStateNormal);
    slider->setHighlighted(true);
    const auto shade = painted().ofKind("bitmap").at(0).multiply;
    ASSERT_TRUE(shade);
    EXPECT_LT(shade->red, 0.85) << "white becomes darker";
    slider->setThumbTintColor(UIColor::blackColor());
    EXPECT_GT(painted().ofKind("bitmap").at(0).multiply->green, 0.2) << "black becomes lighter";
    slider->setThumbTintColor(UIColor::redColor());
    EXPECT_NE(painted().ofKind("bitmap").at(0).multiply, UIColor::redColor());
    slider->setThumbImage(decoder.image("active.png", {31, 31}), UIControlStateHighlighted);
    EXPECT_EQ(painted().ofKind("bitmap").at(0).multiply, UIColor::redColor());
    slider->setHighlighted(false);
    EXPECT_EQ(painted().ofKind("bitmap").at(0).multiply, UIColor::redColor());
}

TEST_F(UISliderDrawing, ShadesThePlatformsOwnThumbWhileHeld) {
    slider->setHighlighted(true);
    EXPECT_LT(painted().ofKind("rounded").at(2).color.red, 0.85);
    slider->setHighlighted(false);
    EXPECT_EQ(painted().ofKind("rounded").at(2).color, UIColor::whiteColor());
}

TEST_F(UISliderDrawing, DrawsItsValueImagesAtTheEnds) {
    slider->setMinimumValueImage(decoder.image("quiet.png", {18, 20}));
    slider->setMaximumValueImage(decoder.image("loud.png", {22, 16}));
    const auto bitmaps = painted().ofKind("bitmap");
    ASSERT_EQ(bitmaps.size(), 2U);
    EXPECT_EQ(bitmaps[0].rect, CGRectMake(20, 25, 18, 20));
    EXPECT_EQ(bitmaps[1].rect, CGRectMake(278, 27, 22, 16));
}

TEST_F(UISliderDrawing, RingsTheThumbWhileItsFocusIsVisible) {
    window->sendKey(UIKey::Tab);
    const auto strokes = painted().ofKind("stroke");
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(strokes[0].color, systemBlue);
    EXPECT_EQ(strokes[0].width, 2);
    EXPECT_EQ(strokes[1].color, UIColor::whiteColor());
    const CGRect thumb = CGRectOffset(slider->thumbRect(), 20, 20);
    EXPECT_LT(strokes[0].rect.origin.x + 2, thumb.origin.x);
    window->sendTouch(UITouchPhase::Began, {5, 200});
    EXPECT_TRUE(painted().ofKind("stroke").empty());
}

TEST_F(UISliderDrawing, FollowsTheThumbImagesShapeWithTheRing) {
    slider->setThumbImage(decoder.image("thumb.png", {31, 31}), UIControlStateNormal);
    window->sendKey(UIKey::Tab);
    const auto strokes = painted().ofKind("stroke");
    ASSERT_EQ(strokes.size(), 2U);
    const CGRect thumb = CGRectOffset(slider->thumbRect(), 20, 20);
    EXPECT_EQ(strokes[0].rect.size, (CGSize{31 + 6, 31 + 6})) << "the image is opaque to its edge";
    EXPECT_NEAR(CGRectGetMidX(strokes[0].rect), CGRectGetMidX(thumb), 0.5);
    EXPECT_EQ(strokes[0].radius, 3) << "its corners are square";
}

TEST_F(UISliderDrawing, PaintsHardlyMoreThanAThumbImageWhenItMoves) {
    slider->setThumbImage(decoder.image("thumb.png", {31, 31}), UIControlStateNormal);
    painted();
    const CGRect before = CGRectOffset(slider->thumbRect(), 20, 20);
    slider->setValue(51);
    const CGRect both = CGRectUnion(before, CGRectOffset(slider->thumbRect(), 20, 20));
    const std::vector<CGRect> moved = window->takeDamage();
    ASSERT_EQ(moved.size(), 1U);
    const CGRect most = CGRectInset(both, -2, -2);
    EXPECT_EQ(CGRectIntersection(moved[0], both), both);
    EXPECT_EQ(CGRectIntersection(moved[0], most), moved[0]);
}

TEST_F(UISliderDrawing, MakesRoomForTheRingWhileItIsThere) {
    slider->setThumbImage(decoder.image("thumb.png", {31, 31}), UIControlStateNormal);
    painted();
    window->sendKey(UIKey::Tab);
    const std::vector<CGRect> shown = window->damage();
    const CGRect ring = painted().ofKind("stroke").at(0).rect;
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(CGRectIntersection(ring, shown[0]), ring);
    window->setFocusedView(nullptr);
    const std::vector<CGRect> gone = window->damage();
    ASSERT_EQ(gone.size(), 1U);
    EXPECT_EQ(CGRectIntersection(ring, gone[0]), ring);
    EXPECT_TRUE(painted().ofKind("stroke").empty());
    slider->setValue(51);
    ASSERT_EQ(window->damage().size(), 1U);
    EXPECT_LE(window->damage()[0].size.height, 31 + 3) << "the room is given back";
}

TEST_F(UISliderDrawing, PaintsTheBorderOfATrackThatIsHigherThanItsThumb) {
    slider->setThumbImage(decoder.image("thumb.png", {8, 8}), UIControlStateNormal);
    slider->setMinimumTrackImage(decoder.image("left.png", {20, 28}), UIControlStateNormal);
    painted();
    slider->setValue(90);
    ASSERT_EQ(window->damage().size(), 1U);
    EXPECT_EQ(window->damage()[0].size.height, 28);
}

TEST_F(UISliderDrawing, IsFaintAsAWholeWhileDisabled) {
    slider->setMinimumValueImage(decoder.image("quiet.png", {18, 20}));
    const RecordingCanvas enabled = painted();
    for (const auto& operation : enabled.operations())
        EXPECT_EQ(operation.opacity, 1) << operation.kind;
    slider->setEnabled(false);
    EXPECT_FALSE(window->damage().empty());
    const RecordingCanvas disabled = painted();
    EXPECT_FALSE(disabled.operations().empty());
    for (const auto& operation : disabled.operations()) {
        EXPECT_LT(operation.opacity, 0.6) << operation.kind;
        EXPECT_GT(operation.opacity, 0.2) << operation.kind << " is still to be seen";
    }
}

TEST_F(UISliderDrawing, IsFaintAndFillsNothingWhileItsValueIsNotKnown) {
    slider->setMinimumTrackTintColor(UIColor::redColor());
    slider->setMaximumTrackTintColor(UIColor::greenColor());
    slider->setValue(60);
    painted();
    slider->setValueKnown(false);
    EXPECT_FALSE(window->damage().empty());
    const RecordingCanvas unknown = painted();
    EXPECT_FALSE(unknown.operations().empty());
    for (const auto& operation : unknown.operations()) {
        EXPECT_LT(operation.opacity, 0.6) << operation.kind;
        EXPECT_NE(operation.color, UIColor::redColor()) << operation.kind;
    }
    EXPECT_EQ(unknown.ofKind("rounded").front().color, UIColor::greenColor());
    slider->setValueKnown(true);
    EXPECT_FALSE(window->damage().empty());
    EXPECT_EQ(painted().ofKind("rounded").at(1).color, UIColor::redColor());
}

TEST_F(UISliderDrawing, ShowsItsFocusInFullWhileItsValueIsNotKnown) {
    slider->setValueKnown(false);
    window->sendKey(UIKey::Tab);
    const auto strokes = painted().ofKind("stroke");
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(strokes[0].opacity, 1);
}

TEST_F(UISliderDrawing, DrawsItsBackgroundFirst) {
    slider->setBackgroundColor(UIColor::redColor());
    EXPECT_EQ(painted().operations().at(0).kind, "fill");
}

TEST_F(UISliderDrawing, DrawsATrackWithoutRoomForAThumb) {
    slider->setFrame(CGRectMake(20, 20, 20, 30));
    const RecordingCanvas canvas = painted();
    EXPECT_EQ(canvas.ofKind("rounded").size(), 2U);
    EXPECT_TRUE(canvas.ofKind("shadow").empty());
}
