#pragma once

#include "platform/uikit/Geometry.hpp"

#include <gdk/gdk.h>

#include <optional>

/// Where the topmost window of whatever program is that has the point, with the frame around it.
/// Points of the screen. nullopt over the bare screen, and on displays that do not tell: all but
/// X11's.
std::optional<CGRect> topmostWindowAt(GdkDisplay* display, const CGPoint& point);

/// Where the pointer is on the screen; nullopt on displays that do not tell.
std::optional<CGPoint> pointerOnScreen(GdkDisplay* display);
