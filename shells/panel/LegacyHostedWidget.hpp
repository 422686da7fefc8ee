#pragma once

#include "platform/uikit/BBWeeAppController.hpp"
#include "shells/panel/ControllerWidget.hpp"
#include "shells/panel/TapView.hpp"

#include <memory>

/// A widget under the legacy host: the controller's own view in a container that passes on taps
/// only, as their places. Loaded when it is presented, unloaded when it is dismissed. Main thread.
class LegacyHostedWidget final : public ControllerWidget {
 public:
    explicit LegacyHostedWidget(std::shared_ptr<BBWeeAppController> controller);
    /// Dismisses it if it is presented.
    ~LegacyHostedWidget() override;

    std::shared_ptr<UIView> view() override;
    CGSize preferredSize() override;
    void present() override;
    void dismiss() override;

 protected:
    NSObject& controller() override { return *controller_; }

 private:
    bool responds(const char* selector) const { return controller_->respondsToSelector(selector); }
    void measure();

    std::shared_ptr<BBWeeAppController> controller_;
    std::shared_ptr<TapView> container_ = std::make_shared<TapView>();
};
