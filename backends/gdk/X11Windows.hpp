#pragma once

#include "platform/uikit/Geometry.hpp"

#include <gdk/gdk.h>

#include <optional>
#include <string>
#include <vector>

namespace windowing {

// What the program needs of X11 beyond GDK. Elsewhere these functions answer nothing and do
// nothing. Main thread.

/// The frame of the topmost window, of any program, at that point, in screen points. nullopt over
/// the bare screen.
std::optional<CGRect> topmostWindowAt(GdkDisplay* display, const CGPoint& point);

/// Where the pointer is on the screen.
std::optional<CGPoint> pointerOnScreen(GdkDisplay* display);

/// Sets the window's icon in as many sizes as there are PNG files, for panels and window lists.
/// Files that cannot be read are skipped. Desktops on Wayland find the icon by the program's name.
void setWindowIcon(GdkWindow* window, const std::vector<std::string>& files);

}  // namespace windowing
