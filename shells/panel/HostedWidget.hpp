#pragma once

#include "platform/uikit/SBUIWidgetViewController.hpp"
#include "shells/panel/ControllerWidget.hpp"

#include <limits>
#include <memory>
#include <optional>
#include <string>

/// The width that a widget's parent has on that machine, where it has no more than `room`; points.
CGFloat parentWidthForModel(const std::string& model,
                            CGFloat room = std::numeric_limits<CGFloat>::infinity());

/// A widget under its host: gives its controller a parent and a host to talk to, loads its view,
/// presents and dismisses it, and keeps its container as large as it prefers to be. Main thread.
class HostedWidget final : public ControllerWidget {
 public:
    /// `parentWidth` is in points.
    HostedWidget(std::shared_ptr<_SBUIWidgetViewController> controller, CGFloat parentWidth);
    /// Dismisses it if it is presented.
    ~HostedWidget() override;

    std::shared_ptr<UIView> view() override { return controller_->view(); }
    CGSize preferredSize() override;
    void setParentWidth(CGFloat width) override;
    void present() override;
    void dismiss() override;

 protected:
    NSObject& controller() override { return *controller_; }

 private:
    class Host;

    void preferredSizeIs(const CGSize& size);
    void askForSizeLater();

    std::shared_ptr<_SBUIWidgetViewController> controller_;
    std::shared_ptr<UIViewController> parent_;
    std::shared_ptr<Host> host_;
    std::optional<CGSize> size_;
    bool presenting_ = false;  ///< Within the widget's own hostWillPresent.
};
