#include "shells/desktop/OrdinaryPlace.hpp"

#include "shells/desktop/WindowOutline.hpp"

GdkWindow* OrdinaryPlace::newWindow(const CGSize& size) {
    return newWindowOfKind(GDK_WINDOW_TOPLEVEL, GDK_WINDOW_TYPE_HINT_DIALOG, size);
}

/// Of the monitor that the window is on; without a visible window, of the first one.
CGSize OrdinaryPlace::availableSize(GdkWindow* window, const PanelLook& /*look*/) const {
    const bool visible = window != nullptr && gdk_window_is_visible(window) != FALSE;
    GdkMonitor* monitor = visible ? gdk_display_get_monitor_at_window(display(), window)
                                  : gdk_display_get_primary_monitor(display());
    if (monitor == nullptr) monitor = gdk_display_get_monitor(display(), 0);
    GdkRectangle area = {0, 0, 1024, 768};  // A display may have lost its last monitor.
    if (monitor) gdk_monitor_get_workarea(monitor, &area);
    return {static_cast<CGFloat>(area.width), static_cast<CGFloat>(area.height)};
}

void OrdinaryPlace::arrange(GdkWindow* window, const PanelLayout& layout, const PanelLook& look) {
    const auto width = static_cast<int>(layout.window.width);
    const auto height = static_cast<int>(layout.window.height);
    GdkGeometry fixed = {};
    fixed.min_width = fixed.max_width = width;
    fixed.min_height = fixed.max_height = height;
    gdk_window_set_geometry_hints(
        window, &fixed, static_cast<GdkWindowHints>(GDK_HINT_MIN_SIZE | GDK_HINT_MAX_SIZE));
    marginWindow(window, look);
    gdk_window_resize(window, width, height);
}
