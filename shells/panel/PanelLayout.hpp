#pragma once

#include "platform/uikit/Geometry.hpp"

/// What surrounds the panel. Soft: a shadow that fades out, where the screen shows through and
/// windows may have one. Hard: nothing but round corners, where it shows through. Square: nothing,
/// where it doesn't: corners would be stairs of whole points there.
enum class PanelEdge { Soft, Hard, Square };

/// Where the parts of the window lie, in points of the window.
struct PanelLayout {
    CGSize window;
    CGRect panel;
    CGRect viewport;  ///< What the widget shows through, as wide as the panel.
};

inline constexpr CGFloat panelRadius = 16;  // points

/// Of the panel's corners, in points.
CGFloat cornerRadius(PanelEdge edge);

/// How far the shadow reaches beyond the panel; wider below, since the light comes from above.
UIEdgeInsets panelMargins(PanelEdge edge);

/// A panel around a widget of that size, in a window no larger than `available`.
PanelLayout panelLayout(const CGSize& widget, const CGSize& available, PanelEdge edge);

/// The same in a window whose size was decided elsewhere, as by a tiling window manager: the panel
/// keeps its size where it can, and lies in the middle.
PanelLayout panelLayoutInWindow(const CGSize& widget, const CGSize& window, PanelEdge edge);
