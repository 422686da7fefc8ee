#pragma once

#include "platform/uikit/Geometry.hpp"

namespace shell {

/// The panel's edge. Soft: a shadow, where windows are translucent and may have one. Hard: round
/// corners only, where windows are translucent. Square: for opaque windows, whose round corners
/// would be steps of whole points.
enum class PanelEdge { Soft, Hard, Square };

/// The panel's look: its edge and its zoom.
struct PanelLook {
    PanelLook(PanelEdge anEdge, CGFloat aZoom = 1) : edge(anEdge), zoom(aZoom) {}
    PanelEdge edge;
    CGFloat zoom;  ///< Window units per point of the panel.
};

/// The rectangles of the window's parts, in its units.
struct PanelLayout {
    CGSize window;
    CGRect panel;
    CGRect viewport;  ///< Shows the widget; as wide as the panel.
};

inline constexpr CGFloat panelRadius = 16;  // points

/// The panel's smallest width in points, at which its sliders still fit.
inline constexpr CGSize smallestPanel = {160, 64};

/// The radius of the panel's corners, in points.
CGFloat cornerRadius(PanelEdge edge);

/// The extent of the shadow beyond the panel, in window units; larger below, since the light comes
/// from above.
UIEdgeInsets panelMargins(const PanelLook& look);

/// The layout of a panel around a widget of that size (points) in a window no larger than
/// `available` (window units).
PanelLayout panelLayout(const CGSize& widget, const CGSize& available, const PanelLook& look);

/// The layout in a window whose size was decided elsewhere, as by a tiling window manager: the
/// panel keeps its size if it fits, and is centred.
PanelLayout panelLayoutInWindow(const CGSize& widget, const CGSize& window, const PanelLook& look);

/// The same layout in points of the panel.
PanelLayout inPoints(const PanelLayout& layout, CGFloat zoom);

/// The wanted zoom, or a smaller one (half of it at least) with which the smallest panel is no
/// wider than `room`, in window units.
CGFloat zoomWithin(CGFloat wanted, CGFloat room);

/// The wanted gap around a panel, or a smaller one that leaves room for some rows between two gaps;
/// all in the same units.
CGFloat gapWithin(CGFloat wanted, const CGSize& area);

}  // namespace shell
