#include "backends/cairo/CairoPicture.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "tests/support/Golden.hpp"
#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

namespace {

constexpr UIColor dark = {28.0 / 255, 28.0 / 255, 30.0 / 255, 1};

// Sliders in the platform's own look, one under the other.
class GoldenSlider : public testing::Test {
 public:
    std::shared_ptr<UISlider> add(float value) {
        auto slider = std::make_shared<UISlider>(CGRectMake(20, nextY, 280, 30));
        slider->setValue(value);
        window->addSubview(slider);
        nextY += 40;
        return slider;
    }

    void expectGolden(const std::string& name) {
        for (const int scale : {1, 2}) {
            const std::string fullName = name + "@" + std::to_string(scale) + "x";
            const std::string path = folder.path("slider.png");
            ASSERT_TRUE(painting::paintViewToPNG(window, path, CGFloat(scale)));
            EXPECT_TRUE(fileMatchesGolden(path, fullName));
        }
    }

    TemporaryFolder folder;
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(CGRectMake(0, 0, 320, 210));
    CGFloat nextY = 10;
};

TEST_F(GoldenSlider, StandsAnywhereInItsRange) {
    window->setBackgroundColor(dark);
    for (const float value : {0.0F, 0.25F, 0.5F, 0.995F, 1.0F})
        add(value);
    expectGolden("slider-values");
}

TEST_F(GoldenSlider, StandsOutOnALightBackground) {
    window->setBackgroundColor(UIColor::whiteColor());
    for (const float value : {0.0F, 0.25F, 0.5F, 0.995F, 1.0F})
        add(value);
    expectGolden("slider-light");
}

TEST_F(GoldenSlider, WearsItsTints) {
    window->setBackgroundColor(dark);
    add(0.2F)->setMinimumTrackTintColor(UIColor::redColor());
    add(0.4F)->setMaximumTrackTintColor(UIColor::brownColor());
    add(0.6F)->setThumbTintColor(UIColor::yellowColor());
    const auto all = add(0.8F);
    all->setMinimumTrackTintColor(UIColor::greenColor());
    all->setMaximumTrackTintColor(UIColor::whiteColor());
    all->setThumbTintColor(UIColor::blackColor());
    add(0.9F)->setEnabled(false);
    expectGolden("slider-tints");
}

TEST_F(GoldenSlider, HasNoFilledPartWithoutAKnownValue) {
    window->setBackgroundColor(dark);
    add(0)->setValueKnown(false);
    add(0.5F)->setValueKnown(false);
    const auto tinted = add(0.5F);
    tinted->setMaximumTrackTintColor(UIColor::whiteColor());
    tinted->setValueKnown(false);
    add(0.5F);
    const auto focused = add(0);
    focused->setValueKnown(false);
    window->setFocusedView(focused);
    window->sendKey(UIKey::Left);
    expectGolden("slider-unknown");
}

TEST_F(GoldenSlider, ShowsItsFocusAndItsFinger) {
    window->setBackgroundColor(dark);
    add(0.3F);
    add(0.5F)->setHighlighted(true);
    add(0);
    add(1);
    window->sendKey(UIKey::Tab);
    expectGolden("slider-focus");
}

}  // namespace
