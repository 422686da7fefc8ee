#include "host/TarnwickViewController.hpp"
#include "platform/foundation/NSLog.hpp"

#include <gtest/gtest.h>

namespace {

/// A controller whose views can be counted.
class LegacyView : public testing::Test {
 protected:
    LegacyView() {
        setLogSink([this](const std::string& line) { log.push_back(line); });
        controller->init();
    }
    ~LegacyView() override { setLogSink({}); }

    std::vector<std::string> log;
    std::shared_ptr<TarnwickViewController> controller = std::make_shared<TarnwickViewController>();
};

TEST_F(LegacyView, IsTheMixerItselfAndNothingAroundIt) {
    const auto view = controller->view();
    EXPECT_EQ(view->className(), "TarnwickView");
    EXPECT_EQ(view->frame().origin, (CGPoint{0, 0}));
    EXPECT_EQ(view->autoresizingMask(), 2U) << "flexible width";
    EXPECT_FALSE(view->backgroundColor().has_value());
    EXPECT_TRUE(view->subviews().empty());
}

TEST_F(LegacyView, IsLetGoOfByTheNextOne) {
    const std::weak_ptr<UIView> first = controller->view();
    controller->loadView();
    EXPECT_TRUE(first.expired());
    EXPECT_NE(controller->view(), nullptr);
}

TEST_F(LegacyView, IsKeptWhenItIsUnloadedUntilTheNextOneComes) {
    const auto parent = std::make_shared<UIView>();
    const std::weak_ptr<UIView> first = controller->view();
    parent->addSubview(first.lock());
    controller->unloadView();
    EXPECT_TRUE(parent->subviews().empty());
    EXPECT_FALSE(first.expired());
    controller->viewWillDisappear();
    EXPECT_NE(controller->view(), first.lock());
    EXPECT_TRUE(first.expired());
}

TEST_F(LegacyView, IsEmptiedWhenItDisappearsAndNotDestroyed) {
    const auto view = controller->view();
    view->addSubview(std::make_shared<UIView>());
    controller->viewWillDisappear();
    EXPECT_TRUE(view->subviews().empty());
    EXPECT_EQ(controller->view(), view);
}

TEST_F(LegacyView, GoesWithItsControllerWithoutAWord) {
    const std::weak_ptr<UIView> view = controller->view();
    log.clear();
    controller = nullptr;
    EXPECT_TRUE(view.expired());
    EXPECT_TRUE(log.empty());
}

TEST_F(LegacyView, IsLoadedWithTheOnlyLineThatTheControllerEverWrites) {
    controller->view();
    controller->preferredViewSize();
    controller->viewHeight();
    controller->viewWillAppear();
    controller->viewDidAppear();
    controller->viewWillDisappear();
    controller->viewDidDisappear();
    controller->unloadView();
    EXPECT_EQ(log, std::vector<std::string>{"TW: old loadView"});
}

TEST_F(LegacyView, AnswersASizeInSinglePrecision) {
    static_assert(std::is_same_v<decltype(controller->viewHeight()), float>);
    static_assert(std::is_same_v<decltype(controller->visibleCategoriesCount()), std::int32_t>);
    EXPECT_EQ(controller->preferredViewSize().height, controller->viewHeight());
}

}  // namespace
