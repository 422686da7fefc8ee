#pragma once

#include <gdk/gdk.h>

/// Takes over how the desktop wants text to be drawn and whether things may move: smoothing,
/// hinting, sub-pixel order, animations. What the desktop does not say stays as it was. To be
/// called once before the first paint, and again for a GDK_SETTING event; answers whether the
/// event (or nullptr, for all) was about one of these, so that everything is painted again.
bool applyDesktopSettings(GdkScreen* screen, const GdkEventSetting* event = nullptr);

/// How much larger than usual the desktop wants text to be, 0.5 to 3; 1 where it does not say.
double desktopTextScale(GdkScreen* screen);
