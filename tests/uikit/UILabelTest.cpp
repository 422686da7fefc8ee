#include "platform/uikit/UILabel.hpp"
#include "tests/support/RecordingCanvas.hpp"
#include "tests/uikit/TestViews.hpp"

namespace {
class LabelTest : public testing::Test {
 protected:
    LabelTest() { window->takeDamage(); }
    ~LabelTest() override { UILabel::setDefaultTextColor(UIColor::blackColor()); }
    std::vector<RecordingCanvas::Operation> texts() {
        RecordingCanvas canvas;
        window->layoutAndPaint(canvas, window->bounds());
        return canvas.ofKind("text");
    }
    std::shared_ptr<UIWindow> window = makeWindow();
    std::shared_ptr<UILabel> label = add<UILabel>(window, CGRectMake(20, 0, 280, 20));
};
}  // namespace

TEST_F(LabelTest, StartsBlackInSeventeenPoints) {
    EXPECT_EQ(label->text(), std::nullopt);
    EXPECT_EQ(label->font(), UIFont::systemFontOfSize(17));
    EXPECT_EQ(label->textColor(), UIColor::blackColor());
    EXPECT_TRUE(texts().empty());
}

TEST_F(LabelTest, PaintsItsTextInItsBounds) {
    label->setText("Media");
    label->setFont(label->font().fontWithSize(12));
    label->setTextColor(UIColor::redColor());
    const auto painted = texts();
    ASSERT_EQ(painted.size(), 1U);
    EXPECT_EQ(painted[0].text, "Media");
    EXPECT_EQ(painted[0].font, UIFont::systemFontOfSize(12));
    EXPECT_EQ(painted[0].color, UIColor::redColor());
    EXPECT_EQ(painted[0].rect, CGRectMake(20, 0, 280, 20));
}

TEST_F(LabelTest, KeepsTheMarginOfItsLeftOnItsRightToo) {
    label->setText("Media");
    for (const CGFloat width : {300.0, 310.0, 290.0}) {
        label->setFrame(CGRectMake(20, 0, width, 20));
        EXPECT_EQ(texts().at(0).rect, CGRectMake(20, 0, std::min<CGFloat>(width, 280), 20));
    }
    label->setFrame(CGRectMake(0, 0, 320, 20));
    EXPECT_EQ(texts().at(0).rect, CGRectMake(0, 0, 320, 20));
    label->setFrame(CGRectMake(300, 0, 20, 20));
    EXPECT_TRUE(texts().empty()) << "there is no room";
}

TEST_F(LabelTest, PaintsNothingForAnEmptyText) {
    label->setText("");
    EXPECT_TRUE(texts().empty());
}

TEST_F(LabelTest, IsPaintedAgainOnlyForAChange) {
    label->setText("Media");
    EXPECT_EQ(window->takeDamage(), std::vector{label->frame()});
    label->setText("Media");
    label->setFont(UIFont::systemFontOfSize(17));
    label->setTextColor(std::nullopt);
    label->setTextColor(UIColor::blackColor());
    EXPECT_TRUE(window->damage().empty());
    label->setText(std::nullopt);
    EXPECT_FALSE(window->takeDamage().empty());
    label->setFont(UIFont::systemFontOfSize(12));
    EXPECT_FALSE(window->takeDamage().empty());
    label->setTextColor(UIColor::redColor());
    EXPECT_FALSE(window->takeDamage().empty());
}

TEST_F(LabelTest, KeepsItsColourForAnEmptyOne) {
    label->setTextColor(UIColor::greenColor());
    label->setTextColor(std::nullopt);
    EXPECT_EQ(label->textColor(), UIColor::greenColor());
}

TEST_F(LabelTest, FollowsTheDefaultColourUntilItHasOne) {
    const auto own = add<UILabel>(window, CGRectMake(0, 0, 1, 1));
    own->setTextColor(UIColor::blackColor());
    UILabel::setDefaultTextColor(UIColor::whiteColor());
    EXPECT_EQ(label->textColor(), UIColor::whiteColor());
    EXPECT_EQ(own->textColor(), UIColor::blackColor());
}

TEST_F(LabelTest, IsPaintedAgainForANewDefaultColourUnlessItHasItsOwn) {
    const auto row = add(window, CGRectMake(0, 50, 320, 50));
    const auto inRow = add<UILabel>(row, CGRectMake(20, 5, 280, 15));
    const auto own = add<UILabel>(row, CGRectMake(20, 30, 280, 15));
    own->setTextColor(UIColor::redColor());
    window->takeDamage();
    UILabel::setDefaultTextColor(UIColor::whiteColor());
    EXPECT_EQ(window->takeDamage(),
              (std::vector{CGRectMake(20, 55, 280, 15), CGRectMake(20, 0, 280, 20)}));
    UILabel::setDefaultTextColor(UIColor::whiteColor());
    EXPECT_TRUE(window->damage().empty());
}

TEST_F(LabelTest, TellsTheShellOfANewText) {
    int told = 0;
    window->setStructureHandler([&] { ++told; });
    texts();
    label->setText("Media");
    EXPECT_EQ(told, 1);
}

TEST_F(LabelTest, LetsTouchesThrough) {
    EXPECT_EQ(window->hitTest({30, 10}, nullptr), window);
}
