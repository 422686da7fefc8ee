#pragma once

#include "platform/uikit/UIViewController.hpp"

#include <memory>

class SBUIWidgetHost;

/// Told by a widget host about its widgets. Optional: widget:didUpdatePreferredSize:.
class SBUIWidgetHostDelegate : public NSObject {
 public:
    /// "widget:didUpdatePreferredSize:".
    virtual void widget(const std::shared_ptr<SBUIWidgetHost>& host, const CGSize& preferredSize) {
        (void)host;
        (void)preferredSize;
    }
};

/// The shell's side of one widget. Optional: invalidatePreferredViewSize.
class SBUIWidgetHost : public NSObject {
 public:
    virtual std::shared_ptr<SBUIWidgetHostDelegate> delegate() { return nullptr; }
    /// The widget may want another size: the host asks for it when it next lays out.
    virtual void invalidatePreferredViewSize() {}
};

/// The controller that a widget host instantiates from a bundle and drives. A bundle derives its
/// principal class from it; a host goes through these steps:
///
///     controller->setWidgetHost(host);
///     parent->addChildViewController(controller);
///     const CGSize size = controller->preferredViewSize();
///     parent->view()->addSubview(controller->view());
///     controller->hostWillPresent();
///     ... the widget is on the screen ...
///     controller->hostDidDismiss();
///
/// It may be presented and dismissed any number of times. Main thread.
// The name is the platform's, and the bundles' principal classes are found by such names.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
class _SBUIWidgetViewController : public UIViewController {
 public:
    std::string_view className() const override { return "_SBUIWidgetViewController"; }

    /// Not owned; nullptr without a host.
    std::shared_ptr<SBUIWidgetHost> widgetHost() const { return widgetHost_.lock(); }
    void setWidgetHost(const std::shared_ptr<SBUIWidgetHost>& host) { widgetHost_ = host; }

    /// Points.
    virtual CGSize preferredViewSize() { return {}; }
    virtual void hostWillPresent() {}
    virtual void hostDidDismiss() {}
    /// Gives back what the view holds; the host will present it again or not.
    virtual void unloadView() {}

 private:
    std::weak_ptr<SBUIWidgetHost> widgetHost_;
};
