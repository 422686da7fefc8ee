#pragma once

#include "platform/uikit/BBWeeAppController.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/common/RowKeeper.hpp"
#include "shells/headless/Answer.hpp"
#include "shells/headless/WidgetHost.hpp"

#include <memory>
#include <optional>
#include <string>

namespace headless {

/// The widget's environment: the bundle, its controller, the window with the view, the host and the
/// parent view controller. One controller at a time.
class Stage {
 public:
    Stage(EventSink& events, std::string bundlePath);
    ~Stage();

    /// Creates an object of the bundle's principal class, or of the registered class of that name.
    Problem create(const std::optional<std::string>& className);
    /// Drops the only reference to the controller.
    Problem release();
    /// nullptr when there is none.
    const std::shared_ptr<NSObject>& controller() const { return controller_; }

    /// Sends the controller "updateValues" if it responds to that: at once, or when no slider is
    /// held.
    void readAgain() { rows_.readAgain(); }
    /// A message was sent to the controller, and its rows may have changed.
    void followRows() { rows_.follow(viewToShow()); }

    /// Points; nullopt: no parent view controller.
    void setParentWidth(const std::optional<double>& width);
    WidgetHost& host() { return *host_; }
    UIWindow& window() { return *window_; }

    /// Puts a legacy controller's view into the window. Has no effect for other controllers.
    void takeLegacyView();

    /// Updates the window for the controller's view without making the controller load it: the view
    /// at the window's origin, the window as large as the view. A legacy controller's view stays
    /// until the controller removes it.
    void updateWindow();

 private:
    std::shared_ptr<UIViewController> viewController() const;
    std::shared_ptr<UIView> viewToShow() const;
    void adopt();
    void readRows();

    std::string bundlePath_;
    std::shared_ptr<WidgetHost> host_;
    std::shared_ptr<UIViewController> parent_;
    std::shared_ptr<NSObject> controller_;
    std::shared_ptr<UIWindow> window_ = std::make_shared<UIWindow>();
    std::shared_ptr<UIView> shown_;
    shell::RowKeeper rows_{[this] { readRows(); }};
};

}  // namespace headless
