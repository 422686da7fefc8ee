#pragma once

#include "platform/uikit/UIView.hpp"

#include <memory>

/// The orientations that a host turns its widgets to, by the platform's numbers.
enum class UIInterfaceOrientation {
    Portrait = 1,
    PortraitUpsideDown = 2,
    LandscapeRight = 3,
    LandscapeLeft = 4
};

/// The controller that the legacy widget host drives: an object with a view and a height, which
/// receives appearances and the places of taps. A host does roughly this:
///
///     auto view = controller->view();
///     if (controller->respondsToSelector("viewHeight")) height = controller->viewHeight();
///     if (controller->respondsToSelector("loadFullView")) controller->loadFullView();
///     ... for a tap at a point of the view:
///     if (controller->respondsToSelector("launchURLForTapLocation:"))
///         open(controller->launchURLForTapLocation(point));
///
/// Only view() is required; a host checks for every other message first, as above. Main thread.
class BBWeeAppController : public NSObject {
 public:
    virtual std::shared_ptr<UIView> view() = 0;

    /// Loads a cheap placeholder until the full view is needed.
    virtual void loadPlaceholderView() {}
    virtual void loadFullView() {}
    virtual void loadView() {}
    virtual void unloadView() {}
    // Spelled so by the hosts.
    virtual void clearShapshotImage() {}

    /// What the host opens when the widget is chosen; nil for nothing.
    virtual std::shared_ptr<NSObject> launchURL() { return nullptr; }
    /// The same for a tap, in the view's coordinates.
    virtual std::shared_ptr<NSObject> launchURLForTapLocation(const CGPoint& location) {
        (void)location;
        return nullptr;
    }

    /// Points.
    virtual float viewHeight() { return 0; }
    virtual void viewWillAppear() {}
    virtual void viewDidAppear() {}
    virtual void viewWillDisappear() {}
    virtual void viewDidDisappear() {}

    virtual void willAnimateRotationToInterfaceOrientation(UIInterfaceOrientation orientation) {
        (void)orientation;
    }
    virtual void willRotateToInterfaceOrientation(UIInterfaceOrientation orientation) {
        (void)orientation;
    }
    virtual void didRotateFromInterfaceOrientation(UIInterfaceOrientation orientation) {
        (void)orientation;
    }
};
