#pragma once

#include "shells/panel/PanelLayout.hpp"

#include <gdk/gdk.h>

/// Tells the window system which part of the window is the panel: clicks on the shadow, and beside
/// a round corner, are for what lies below it. Where nothing shows through, the window is cut to
/// it.
void outlineWindow(GdkWindow* window, const PanelLayout& layout, const PanelLook& look);

/// Tells the window system that the margins of that look are none of the window's size. Some answer
/// by making the window larger by them: to be followed by a resize.
void marginWindow(GdkWindow* window, const PanelLook& look);
