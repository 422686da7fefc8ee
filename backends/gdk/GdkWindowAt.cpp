#include "backends/gdk/GdkWindowAt.hpp"

#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#endif

namespace {

bool tellsOfTheScreen(GdkDisplay* display) {
#ifdef GDK_WINDOWING_X11
    return GDK_IS_X11_DISPLAY(display);
#else
    return false;
#endif
}

}  // namespace

std::optional<CGPoint> pointerOnScreen(GdkDisplay* display) {
    if (!tellsOfTheScreen(display)) return std::nullopt;
    GdkDevice* pointer = gdk_seat_get_pointer(gdk_display_get_default_seat(display));
    if (!pointer) return std::nullopt;
    int x = 0;
    int y = 0;
    gdk_device_get_position(pointer, nullptr, &x, &y);
    return CGPoint{static_cast<CGFloat>(x), static_cast<CGFloat>(y)};
}

#ifdef GDK_WINDOWING_X11

std::optional<CGRect> topmostWindowAt(GdkDisplay* display, const CGPoint& point) {
    if (!tellsOfTheScreen(display)) return std::nullopt;
    GdkWindow* screen = gdk_screen_get_root_window(gdk_display_get_default_screen(display));
    const int scale = gdk_window_get_scale_factor(screen);
    Display* server = gdk_x11_display_get_xdisplay(display);
    const Window root = gdk_x11_window_get_xid(screen);
    Window found = 0;
    Window parent = 0;
    int x = 0;
    int y = 0;
    unsigned width = 0;
    unsigned height = 0;
    unsigned border = 0;
    unsigned depth = 0;
    gdk_x11_display_error_trap_push(display);  // It may go while it is looked at.
    XTranslateCoordinates(server, root, root, static_cast<int>(point.x) * scale,
                          static_cast<int>(point.y) * scale, &x, &y, &found);
    const bool isThere = found != 0 && XGetGeometry(server, found, &parent, &x, &y, &width, &height,
                                                    &border, &depth) != 0;
    gdk_x11_display_error_trap_pop_ignored(display);
    if (!isThere) return std::nullopt;
    const auto points = [scale](auto pixels) {
        return static_cast<CGFloat>(pixels) / static_cast<CGFloat>(scale);
    };
    return CGRectMake(points(x), points(y), points(width + 2 * border),
                      points(height + 2 * border));
}

#else

std::optional<CGRect> topmostWindowAt(GdkDisplay* /*display*/, const CGPoint& /*point*/) {
    return std::nullopt;
}

#endif
