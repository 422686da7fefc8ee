#include "platform/uikit/UIAccessibility.hpp"
#include "platform/uikit/UILabel.hpp"
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
    EXPECT_EQ(accessibilityLabel(*label), "Media");
    EXPECT_EQ(accessibilityLabel(*slider), "Media");
    const auto second = add<UILabel>(row, {});
    second->setText("Calls");
    EXPECT_EQ(accessibilityLabel(*slider), "Media");
    row->addSubview(slider);
    EXPECT_EQ(accessibilityLabel(*slider), "Calls");
}

TEST_F(AccessibilityTest, HasNoNameForAViewWithoutALabelBeforeIt) {
    EXPECT_EQ(accessibilityLabel(*window), std::nullopt);
    EXPECT_EQ(accessibilityLabel(*row), std::nullopt);
    row->addSubview(label);
    EXPECT_EQ(accessibilityLabel(*slider), std::nullopt);
    label->setText(std::nullopt);
    EXPECT_EQ(accessibilityLabel(*label), std::nullopt);
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
