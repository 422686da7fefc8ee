#pragma once

#include <gdk/gdk.h>

/// Whether what lies below a window is seen through its clear parts: a compositor runs.
bool showsThroughWindows(GdkScreen* screen);

/// Whether a window may bring a soft shadow of its own around what it shows: the screen shows
/// through it, and the window manager leaves the shadow out of the window's size. Without the
/// latter, windows would snap and be placed by their shadows, and be given a second one.
bool takesWindowShadows(GdkScreen* screen);
