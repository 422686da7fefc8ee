#pragma once

#include "platform/uikit/UIEvent.hpp"

#include <memory>

/// Additions to the platform's touches and events that make them from nothing, for a host that
/// delivers none.
// The name is that of an addition to platform classes.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
namespace Tarnwick__TouchFix {

class Touch : public UITouch {
 public:
    /// A touch that begins now at `point`, in the coordinates of the window that `view` lies in,
    /// on the view that the window's hit test finds there; on none outside a window.
    bool initWithPoint(const CGPoint& point, const std::shared_ptr<UIView>& view);

    std::uint8_t touchFlags() const { return _touchFlags; }

 private:
    // No window holds what this touch is on until it ends.
    std::shared_ptr<UIView> heldView_;
    std::shared_ptr<UIWindow> heldWindow_;
};

/// A touches event for the touch, or for none, in its present phase. It takes the place of
/// `receiver`, which is let go of. nullptr when the platform has no class "UITouchesEvent".
std::shared_ptr<UIEvent> initWithTouch(std::shared_ptr<UIEvent> receiver,
                                       const std::shared_ptr<UITouch>& touch);

}  // namespace Tarnwick__TouchFix
