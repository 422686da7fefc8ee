#pragma once

#include "platform/uikit/SBUIWidgetViewController.hpp"

#include <functional>
#include <memory>
#include <string>

/// The width that a widget's parent has on that machine, in points.
CGFloat parentWidthForModel(const std::string& model);

/// A widget under its host: gives its controller a parent and a host to talk to, loads its view,
/// presents and dismisses it, and keeps its container as large as it prefers to be. Main thread.
class HostedWidget {
 public:
    /// `parentWidth` is in points.
    HostedWidget(std::shared_ptr<_SBUIWidgetViewController> controller, CGFloat parentWidth);
    /// Dismisses it if it is presented.
    ~HostedWidget();
    HostedWidget(const HostedWidget&) = delete;
    HostedWidget& operator=(const HostedWidget&) = delete;

    /// The widget's container, loaded when first asked for.
    std::shared_ptr<UIView> view() { return controller_->view(); }
    /// Points. What the widget last said, or says when it has not been asked yet.
    CGSize preferredSize();
    void present();
    void dismiss();
    bool isPresented() const { return presented_; }
    /// Called after the preferred size has become another one.
    void setSizeHandler(std::function<void()> handler) { sizeHandler_ = std::move(handler); }

 private:
    class Host;

    void preferredSizeIs(const CGSize& size);
    void askForSizeLater();

    std::shared_ptr<_SBUIWidgetViewController> controller_;
    std::shared_ptr<UIViewController> parent_;
    std::shared_ptr<Host> host_;
    std::optional<CGSize> size_;
    bool presented_ = false;
    bool presenting_ = false;  ///< Within the widget's own hostWillPresent.
    std::function<void()> sizeHandler_;
};
