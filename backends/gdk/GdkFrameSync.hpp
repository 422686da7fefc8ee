#pragma once

#include <gdk/gdk.h>

/// Has a window's frames wait for nobody where no window manager tells of frames that were shown:
/// GDK would ask the X server for one at each frame, and wait for the answer. Holds for the whole
/// life of the window; without effect on other displays.
void skipFrameSyncIfUnmanaged(GdkWindow* window);
