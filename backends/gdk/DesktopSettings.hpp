#pragma once

#include <gdk/gdk.h>

namespace windowing {

/// Applies the desktop's settings for text (smoothing, hinting, sub-pixel order) and animations;
/// settings that the desktop does not provide stay unchanged. Call once before the first paint, and
/// for each GDK_SETTING event. Returns whether the event (or nullptr, for all) concerned one of
/// them, so that everything must be painted again.
bool applyDesktopSettings(GdkScreen* screen, const GdkEventSetting* event = nullptr);

/// The desktop's text scale, 0.5 to 3; 1 if it provides none.
double desktopTextScale(GdkScreen* screen);

/// Whether what lies below a window is seen through its clear parts: a compositor runs.
bool showsThroughWindows(GdkScreen* screen);

/// Whether a window may bring a soft shadow of its own around what it shows: the screen shows
/// through it, and the window manager leaves the shadow out of the window's size. Without the
/// latter, windows would snap and be placed by their shadows, and be given a second one.
bool takesWindowShadows(GdkScreen* screen);

}  // namespace windowing
