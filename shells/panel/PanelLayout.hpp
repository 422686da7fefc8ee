#pragma once

#include "platform/uikit/Geometry.hpp"

/// What surrounds the panel. Soft: a shadow that fades out, where the screen shows through and
/// windows may have one. Hard: nothing but round corners, where it shows through. Square: nothing,
/// where it doesn't: corners would be stairs of whole points there.
enum class PanelEdge { Soft, Hard, Square };

/// How the panel is put into its window.
struct PanelLook {
    PanelLook(PanelEdge anEdge, CGFloat aZoom = 1) : edge(anEdge), zoom(aZoom) {}
    PanelEdge edge;
    CGFloat zoom;  ///< Units of the window in a point of the panel.
};

/// Where the parts of the window lie, in its units.
struct PanelLayout {
    CGSize window;
    CGRect panel;
    CGRect viewport;  ///< What the widget shows through, as wide as the panel.
};

inline constexpr CGFloat panelRadius = 16;  // points

/// The least that a panel is to have, in points: sliders as wide as the panel are whole there.
inline constexpr CGSize smallestPanel = {160, 64};

/// Of the panel's corners, in points.
CGFloat cornerRadius(PanelEdge edge);

/// How far the shadow reaches beyond the panel, in units of the window; wider below, since the
/// light comes from above.
UIEdgeInsets panelMargins(const PanelLook& look);

/// A panel around a widget of that size, in points, in a window no larger than `available`, in its
/// units.
PanelLayout panelLayout(const CGSize& widget, const CGSize& available, const PanelLook& look);

/// The same in a window whose size was decided elsewhere, as by a tiling window manager: the panel
/// keeps its size where it can, and lies in the middle.
PanelLayout panelLayoutInWindow(const CGSize& widget, const CGSize& window, const PanelLook& look);

/// The same layout in points of the panel.
PanelLayout inPoints(const PanelLayout& layout, CGFloat zoom);

/// The zoom that is wanted, or a smaller one, half at least, by which the smallest panel is no
/// wider than `room`, in units of the window.
CGFloat zoomWithin(CGFloat wanted, CGFloat room);

/// The gap around a panel that is wanted, or a smaller one that leaves room for some rows between
/// two such gaps; the same units throughout.
CGFloat gapWithin(CGFloat wanted, const CGSize& area);
