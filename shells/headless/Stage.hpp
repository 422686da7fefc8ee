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

/// The widget's surroundings: the bundle, the controller made from it, the window with its view,
/// the host that it talks to and the parent view controller. One controller at a time.
class Stage {
 public:
    Stage(EventSink& events, std::string bundlePath);
    ~Stage();

    /// Makes the bundle's principal class, or the registered class of that name.
    Failure create(const std::optional<std::string>& className);
    /// Drops the only reference that is held here.
    Failure release();
    /// nullptr when there is none.
    const std::shared_ptr<NSObject>& controller() const { return controller_; }

    /// Sends the controller "updateValues", if there is one that responds to it: at once, or when
    /// no slider is held any more.
    void readAgain() { rows_.readAgain(); }
    /// The controller was sent something, of which its rows may be others.
    void followRows() { rows_.follow(viewToShow()); }

    /// Points; nullopt: no parent view controller.
    void setParentWidth(const std::optional<double>& width);
    WidgetHost& host() { return *host_; }
    UIWindow& window() { return *window_; }

    /// What a legacy host does with the view that its controller hands it. Nothing for another
    /// kind of controller.
    void takeLegacyView();

    /// Brings the window in line with the controller's view, without making the controller load
    /// it: the view at the window's origin, the window as large as the view. A legacy controller's
    /// view stays until the controller takes it out.
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
