#pragma once

#include <gdk/gdk.h>

#include <string>
#include <vector>

/// Gives the window an icon in as many sizes as there are files, for panels and lists of windows to
/// choose from. PNG files; one that cannot be read is left out. Only on X11: elsewhere desktops
/// find the icon by the program's name.
void setWindowIcon(GdkWindow* window, const std::vector<std::string>& files);
