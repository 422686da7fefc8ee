#include "platform/uikit/UIViewController.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace {
class LoadedController : public UIViewController {
 public:
    ~LoadedController() override {
        if (onDestroy) onDestroy();
    }
    void loadView() override {
        ++loads;
        inside = view();
        if (makes) UIViewController::loadView();
        if (fails) throw std::out_of_range("list");
    }
    void viewDidLoad() override { ++loaded; }
    int loads = 0;
    int loaded = 0;
    bool makes = true;
    bool fails = false;
    std::shared_ptr<UIView> inside;
    std::function<void()> onDestroy;
};
}  // namespace

TEST(UIViewController, LoadsItsViewOnceWhenFirstAskedFor) {
    const auto controller = std::make_shared<LoadedController>();
    EXPECT_FALSE(controller->isViewLoaded());
    const auto view = controller->view();
    ASSERT_TRUE(view);
    EXPECT_EQ(controller->view(), view);
    EXPECT_EQ(controller->loads, 1);
    EXPECT_EQ(controller->loaded, 1);
    EXPECT_EQ(controller->inside, nullptr);
}

TEST(UIViewController, LoadsNothingWhereAViewWasSet) {
    const auto controller = std::make_shared<LoadedController>();
    const auto view = std::make_shared<UIView>();
    controller->setView(view);
    EXPECT_EQ(controller->view(), view);
    EXPECT_EQ(controller->loads, 0);
    EXPECT_EQ(controller->loaded, 0);
}

TEST(UIViewController, LoadsAgainAfterItsViewWasTakenAway) {
    const auto controller = std::make_shared<LoadedController>();
    const auto first = controller->view();
    controller->setView(nullptr);
    EXPECT_NE(controller->view(), first);
    EXPECT_EQ(controller->loads, 2);
}

TEST(UIViewController, StaysWithoutAViewWhenLoadingSetsNone) {
    const auto controller = std::make_shared<LoadedController>();
    controller->makes = false;
    EXPECT_EQ(controller->view(), nullptr);
    EXPECT_EQ(controller->loads, 1);
    EXPECT_EQ(controller->loaded, 0);
}

TEST(UIViewController, CanLoadAgainAfterLoadingRaised) {
    const auto controller = std::make_shared<LoadedController>();
    controller->makes = false;
    controller->fails = true;
    EXPECT_THROW(controller->view(), std::out_of_range);
    controller->makes = true;
    controller->fails = false;
    EXPECT_TRUE(controller->view());
}

TEST(UIViewController, OwnsItsChildrenAndTakesThemFromTheirFormerParent) {
    const auto first = std::make_shared<UIViewController>();
    const auto second = std::make_shared<UIViewController>();
    bool destroyed = false;
    auto child = std::make_shared<LoadedController>();
    child->onDestroy = [&] { destroyed = true; };
    first->addChildViewController(child);
    second->addChildViewController(child);
    EXPECT_EQ(child->parentViewController(), second);
    child->removeFromParentViewController();
    EXPECT_EQ(child->parentViewController(), nullptr);
    first->addChildViewController(child);
    const std::weak_ptr<UIViewController> weak = child;
    child.reset();
    EXPECT_FALSE(destroyed);
    weak.lock()->removeFromParentViewController();
    EXPECT_TRUE(destroyed);
}

TEST(UIViewController, RefusesItselfItsParentsAndNothing) {
    const auto parent = std::make_shared<UIViewController>();
    const auto child = std::make_shared<UIViewController>();
    parent->addChildViewController(child);
    child->addChildViewController(parent);
    child->addChildViewController(child);
    child->addChildViewController(nullptr);
    EXPECT_EQ(parent->parentViewController(), nullptr);
    EXPECT_EQ(child->parentViewController(), parent);
}
