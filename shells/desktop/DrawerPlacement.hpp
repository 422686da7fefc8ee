#pragma once

#include "platform/uikit/Geometry.hpp"

#include <span>

/// A monitor, in points of the screen.
struct MonitorArea {
    CGRect whole;
    CGRect work;  ///< Without what panels and docks keep for themselves; within `whole`.
};

/// The monitor that a point is on, or the nearest one; nullptr when there is none.
const MonitorArea* monitorAt(const CGPoint& point, std::span<const MonitorArea> monitors);

/// How large a drawer may be on that monitor with a gap around it.
CGSize roomForDrawer(const MonitorArea& monitor, CGFloat gap);

/// Where the drawer's origin goes for an icon at that point: on the side of the icon that is away
/// from its panel or, where none is known, from the monitor's edge, in the icon's middle, and moved
/// as little as needed to lie within the work area with the gap around it. One that is too large
/// begins where the work area does. Whole points.
CGPoint drawerOrigin(const CGPoint& icon, const CGSize& drawer, const MonitorArea& monitor,
                     CGFloat gap);
