#include "platform/foundation/NSClassRegistry.hpp"
#include "platform/uikit/SBUIWidgetViewController.hpp"
#include "tests/widget/WidgetFixture.hpp"

namespace {

using Controller = _SBUIWidgetViewController;

class Delegate : public SBUIWidgetHostDelegate {
 public:
    std::string_view className() const override { return "Delegate"; }
    bool respondsToSelector(std::string_view) const override { return true; }
    void widget(const std::shared_ptr<SBUIWidgetHost>&, const CGSize&) override {
        if (whenTold) whenTold();
    }
    std::function<void()> whenTold;
};

class Host : public SBUIWidgetHost {
 public:
    std::string_view className() const override { return "Host"; }
    bool respondsToSelector(std::string_view) const override { return true; }
    std::shared_ptr<SBUIWidgetHostDelegate> delegate() override { return delegate_; }
    void invalidatePreferredViewSize() override { ++invalidations; }
    std::shared_ptr<Delegate> delegate_ = std::make_shared<Delegate>();
    int invalidations = 0;
};

class Presentation : public WidgetTest {
 protected:
    static std::shared_ptr<Controller> newController() {
        const Class* type = NSClassFromString("TarnwickViewControllerNew");
        auto controller = std::dynamic_pointer_cast<Controller>(type->create());
        EXPECT_TRUE(controller->init());
        return controller;
    }
};

TEST_F(Presentation, AsksTheHostThatTheWidgetHasByThenToLayOut) {
    const auto controller = newController();
    const auto first = std::make_shared<Host>();
    const auto second = std::make_shared<Host>();
    controller->setWidgetHost(first);
    first->delegate_->whenTold = [&] { controller->setWidgetHost(second); };
    controller->hostWillPresent();
    EXPECT_EQ(first->invalidations, 0);
    EXPECT_EQ(second->invalidations, 1);
}

TEST_F(Presentation, OutlivesAHostThatGoesWhenItIsTold) {
    const auto controller = newController();
    auto host = std::make_shared<Host>();
    const auto delegate = host->delegate_;
    delegate->whenTold = [&] {
        controller->setWidgetHost(nullptr);
        host.reset();
    };
    controller->setWidgetHost(host);
    controller->hostWillPresent();
    EXPECT_EQ(controller->widgetHost(), nullptr);
    EXPECT_EQ(timesLogged("TW: self.preferredViewSize: {0, 20}") +
                  timesLogged("TW: self.preferredViewSize: {0, 270}"),
              1U);
}

TEST_F(Presentation, KnowsBothAccessorsOfItsBundle) {
    const auto controller = newController();
    EXPECT_TRUE(controller->respondsToSelector("bundle"));
    EXPECT_TRUE(controller->respondsToSelector("setBundle:"));
}

}  // namespace
