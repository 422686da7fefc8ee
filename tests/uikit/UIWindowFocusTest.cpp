#include "tests/uikit/TestViews.hpp"

namespace {
class FocusTest : public testing::Test {
 protected:
    std::shared_ptr<UIWindow> window = makeWindow();
    std::shared_ptr<FocusableView> first = add<FocusableView>(window, CGRectMake(0, 0, 50, 50));
    std::shared_ptr<UIView> row = add(window, CGRectMake(0, 100, 320, 50));
    std::shared_ptr<FocusableView> second = add<FocusableView>(row, CGRectMake(0, 0, 50, 50));
    std::shared_ptr<FocusableView> third = add<FocusableView>(window, CGRectMake(50, 0, 50, 50));
};
}  // namespace

TEST_F(FocusTest, GoesRoundInDocumentOrder) {
    EXPECT_EQ(window->focusedView(), nullptr);
    for (const auto& view : {first, second, third, first}) {
        EXPECT_TRUE(window->sendKey(UIKey::Tab));
        EXPECT_EQ(window->focusedView(), view);
        EXPECT_TRUE(view->isFocused());
    }
    EXPECT_FALSE(second->isFocused());
}

TEST_F(FocusTest, GoesRoundBackwards) {
    for (const auto& view : {third, second, first, third}) {
        EXPECT_TRUE(window->sendKey(UIKey::BackTab));
        EXPECT_EQ(window->focusedView(), view);
    }
}

TEST_F(FocusTest, PassesByViewsThatCannotHaveIt) {
    first->focusable = false;
    row->setHidden(true);
    window->sendKey(UIKey::Tab);
    EXPECT_EQ(window->focusedView(), third);
    row->setHidden(false);
    row->setUserInteractionEnabled(false);
    window->sendKey(UIKey::Tab);
    EXPECT_EQ(window->focusedView(), third);
    third->focusable = false;
    EXPECT_FALSE(window->sendKey(UIKey::Tab));
}

TEST_F(FocusTest, IsRefusedToViewsThatCannotHaveIt) {
    window->setFocusedView(first);
    window->setFocusedView(row);
    second->setHidden(true);
    window->setFocusedView(second);
    window->setFocusedView(std::make_shared<FocusableView>());
    const auto other = makeWindow();
    window->setFocusedView(add<FocusableView>(other, {}));
    EXPECT_EQ(window->focusedView(), first);
    window->setFocusedView(nullptr);
    EXPECT_EQ(window->focusedView(), nullptr);
}

TEST_F(FocusTest, IsLostByAViewThatIsHiddenRemovedOrDestroyed) {
    window->setFocusedView(second);
    row->setHidden(true);
    EXPECT_EQ(window->focusedView(), nullptr);
    row->setHidden(false);
    window->setFocusedView(second);
    row->removeFromSuperview();
    EXPECT_EQ(window->focusedView(), nullptr);
    window->setFocusedView(first);
    first->removeFromSuperview();
    first.reset();
    EXPECT_EQ(window->focusedView(), nullptr);
    EXPECT_FALSE(window->sendKey(UIKey::Left));
}

TEST_F(FocusTest, IsKeptByAViewThatMovesWithinTheWindow) {
    window->setFocusedView(second);
    window->addSubview(second);
    EXPECT_EQ(window->focusedView(), second);
}

TEST_F(FocusTest, BringsOtherKeysToItsView) {
    EXPECT_FALSE(window->sendKey(UIKey::Left));
    window->setFocusedView(second);
    EXPECT_TRUE(window->sendKey(UIKey::Left));
    second->usesKeys = false;
    EXPECT_FALSE(window->sendKey(UIKey::End));
    EXPECT_EQ(second->keys, (std::vector{UIKey::Left, UIKey::End}));
    row->setUserInteractionEnabled(false);
    EXPECT_FALSE(window->sendKey(UIKey::Left));
    EXPECT_EQ(second->keys.size(), 2U);
}

TEST_F(FocusTest, IsSeenFromAKeyUntilTheNextTouch) {
    window->setFocusedView(first);
    EXPECT_FALSE(window->isFocusVisible());
    window->takeDamage();
    window->sendKey(UIKey::Left);
    EXPECT_TRUE(window->isFocusVisible());
    EXPECT_EQ(window->takeDamage(), std::vector{first->frame()});
    window->sendTouch(UITouchPhase::Began, {300, 200});
    EXPECT_FALSE(window->isFocusVisible());
    EXPECT_EQ(window->takeDamage(), std::vector{first->frame()});
    EXPECT_EQ(window->focusedView(), first);
}

TEST_F(FocusTest, DamagesTheViewsItLeavesAndComesTo) {
    window->setFocusedView(first);
    window->takeDamage();
    window->setFocusedView(second);
    EXPECT_EQ(window->takeDamage(), (std::vector{first->frame(), CGRectMake(0, 100, 50, 50)}));
    window->setFocusedView(second);
    EXPECT_TRUE(window->damage().empty());
}

TEST_F(FocusTest, ComesToTheViewThatATouchBeginsOn) {
    window->sendTouch(UITouchPhase::Began, {10, 110});
    EXPECT_EQ(window->focusedView(), second);
    EXPECT_FALSE(window->isFocusVisible());
}
