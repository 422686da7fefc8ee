#pragma once

#include "shells/desktop/PanelLayout.hpp"

#include <gdk/gdk.h>

/// Tells the window system which part of the window is the panel. With a soft edge: that clicks on
/// the shadow are for what lies below it, and that the shadow is none of the window's size. With a
/// hard one: that the window has round corners.
void outlineWindow(GdkWindow* window, const PanelLayout& layout, PanelEdge edge);
