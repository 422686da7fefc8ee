#include "platform/uikit/UILabel.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIView.hpp"
#include "tests/uikit/TestViews.hpp"

namespace {
class AccessibilityTest : public testing::Test {
 protected:
    AccessibilityTest() { label->setText("Media"); }
    std::shared_ptr<UIWindow> window = makeWindow();
    std::shared_ptr<UIView> row = add(window, CGRectMake(0, 0, 320, 50));
    std::shared_ptr<UILabel> label = add<UILabel>(row, CGRectMake(20, 0, 280, 20));
    std::shared_ptr<UISlider> slider = add<UISlider>(row, CGRectMake(20, 20, 280, 30));
};
}  // namespace

TEST_F(AccessibilityTest, CallsALabelByItsTextAndASliderByTheLabelBeforeIt) {
    EXPECT_EQ(label->accessibilityLabel(), "Media");
    EXPECT_EQ(slider->accessibilityLabel(), "Media");
    const auto second = add<UILabel>(row, {});
    second->setText("Calls");
    EXPECT_EQ(slider->accessibilityLabel(), "Media");
    row->addSubview(slider);
    EXPECT_EQ(slider->accessibilityLabel(), "Calls");
}

TEST_F(AccessibilityTest, HasNoNameForAViewWithoutALabelBeforeIt) {
    EXPECT_EQ(window->accessibilityLabel(), std::nullopt);
    EXPECT_EQ(row->accessibilityLabel(), std::nullopt);
    row->addSubview(label);
    EXPECT_EQ(slider->accessibilityLabel(), std::nullopt);
    label->setText(std::nullopt);
    EXPECT_EQ(label->accessibilityLabel(), std::nullopt);
}

TEST_F(AccessibilityTest, ListsVisibleLabelsAndSlidersInDocumentOrder) {
    using Views = std::vector<std::shared_ptr<UIView>>;
    const auto last = add<UILabel>(window, {});
    EXPECT_EQ(accessibilityElements(window), (Views{label, slider, last}));
    label->setHidden(true);
    EXPECT_EQ(accessibilityElements(window), (Views{slider, last}));
    row->setHidden(true);
    EXPECT_EQ(accessibilityElements(window), Views{last});
    EXPECT_TRUE(accessibilityElements(nullptr).empty());
}

TEST_F(AccessibilityTest, CallsASliderByItsTextWithoutTheValueInIt) {
    const std::pair<const char*, const char*> names[] = {
        {"Bell: 40%", "Bell"},
        {"Media (Speaker): 100%", "Media (Speaker)"},
        {"Calls (Joe's: 5%): unknown", "Calls (Joe's: 5%)"},
        {"Calls (Joe's: 5%)", "Calls (Joe's: 5%)"},
        {"Notes: 7 of 8%", "Notes: 7 of 8%"},
        {"Unknown", "Unknown"},
        {"40%", "40%"},
        {": %", ": %"},
        {"", ""},
    };
    for (const auto& [text, name] : names) {
        label->setText(text);
        EXPECT_EQ(slider->accessibilityName(), name) << text;
        EXPECT_EQ(label->accessibilityName(), text) << "a label is what it says";
    }
    label->setText(std::nullopt);
    EXPECT_EQ(slider->accessibilityName(), std::nullopt);
}

TEST_F(AccessibilityTest, TellsASlidersValueAsItsTextDoes) {
    label->setText("Media (Speaker): 40%");
    EXPECT_EQ(slider->accessibilityValue(), "40%");
    label->setText("Calls: unknown");
    EXPECT_EQ(slider->accessibilityValue(), "unknown");
    label->setText("Calls");
    EXPECT_EQ(slider->accessibilityValue(), std::nullopt);
}

TEST_F(AccessibilityTest, ListsWhatLiesFurtherUpFirst) {
    using Views = std::vector<std::shared_ptr<UIView>>;
    const auto above = add<UILabel>(window, CGRectMake(0, -20, 320, 20));
    const auto below = add<UILabel>(window, CGRectMake(0, 60, 320, 20));
    const auto beside = add<UILabel>(window, CGRectMake(100, 60, 320, 20));
    EXPECT_EQ(accessibilityElements(window), (Views{above, label, slider, below, beside}));
    below->setFrame(CGRectMake(0, -30, 320, 20));
    EXPECT_EQ(accessibilityElements(window), (Views{below, above, label, slider, beside}));
}
