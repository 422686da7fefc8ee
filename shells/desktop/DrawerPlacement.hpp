#pragma once

#include "platform/uikit/Geometry.hpp"

#include <optional>
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

/// The same monitor without that window, if it is a panel: a thin one along an edge. Not every
/// panel keeps its place for itself, nor does every desktop tell of those that do.
MonitorArea withoutPanel(const MonitorArea& monitor, const CGRect& window);

/// Where the drawer's origin goes for an icon at that point: at the side of the panel that the icon
/// lies in or, where none is known, of the icon that is away from the monitor's edge. Along the
/// panel it lies in the icon's middle, or in the corner where it would come near to that, always
/// within the work area with the gap around it. One that is too large begins where the work area
/// does. Whole points.
CGPoint drawerOrigin(const CGPoint& icon, const CGSize& drawer, const MonitorArea& monitor,
                     CGFloat gap);

/// Where an icon is, as far as presses on it tell: each is somewhere in it. It stays where the
/// first one was while the others are no farther from there than an icon is wide, so that what
/// opens beside the icon always opens at the same place.
class IconSpot {
 public:
    void pressed(const CGPoint& point);
    /// nullopt before the first press.
    const std::optional<CGPoint>& place() const { return place_; }

 private:
    std::optional<CGPoint> place_;
};
