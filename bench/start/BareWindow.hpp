#pragma once

#include <gdk/gdk.h>

/// Shows a window of the mixer's size for as long as the program runs; GDK's events go to `handle`.
inline GdkWindow* showBareWindow(GdkEventFunc handle) {
    GdkWindowAttr attributes = {};
    attributes.width = 560;  // points
    attributes.height = 270;
    attributes.wclass = GDK_INPUT_OUTPUT;
    attributes.window_type = GDK_WINDOW_TOPLEVEL;
    attributes.event_mask = GDK_EXPOSURE_MASK;
    GdkWindow* window = gdk_window_new(nullptr, &attributes, 0);
    gdk_event_handler_set(handle, nullptr, nullptr);
    gdk_window_show(window);
    return window;
}
