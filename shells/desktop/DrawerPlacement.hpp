#pragma once

#include "platform/uikit/Geometry.hpp"

#include <optional>
#include <span>

namespace desktop {

/// A monitor, in screen points.
struct MonitorArea {
    CGRect whole;
    CGRect work;  ///< Without the space reserved by panels and docks; within `whole`.
};

/// The monitor that contains a point, or the nearest one; nullptr if there is none.
const MonitorArea* monitorAt(const CGPoint& point, std::span<const MonitorArea> monitors);

/// The maximum size of a drawer on the monitor with a gap around it.
CGSize roomForDrawer(const MonitorArea& monitor, CGFloat gap);

/// The monitor without the window's area, if the window is a panel, that is, thin and along an
/// edge. Not all panels reserve their space, and not all desktops report the ones that do.
MonitorArea withoutPanel(const MonitorArea& monitor, const CGRect& window);

/// The drawer's origin for an icon at that point: beside the panel that contains the icon or, if
/// none is known, beside the icon, away from the monitor's edge. Along the panel the drawer is
/// centred on the icon, or in the corner if that is near; always inside the work area with the gap
/// around it. A drawer that is too large starts where the work area starts. Whole points.
CGPoint drawerOrigin(const CGPoint& icon, const CGSize& drawer, const MonitorArea& monitor,
                     CGFloat gap);

/// Estimates an icon's place from the presses on it. The place of the first press is kept while
/// later ones are within an icon's width of it, so the drawer always opens at the same place.
class IconSpot {
 public:
    void pressed(const CGPoint& point);
    /// nullopt before the first press.
    const std::optional<CGPoint>& place() const { return place_; }

 private:
    std::optional<CGPoint> place_;
};

}  // namespace desktop
