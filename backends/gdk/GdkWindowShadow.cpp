#include "backends/gdk/GdkWindowShadow.hpp"

#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#endif

bool showsThroughWindows(GdkScreen* screen) {
    return gdk_screen_is_composited(screen) != FALSE &&
           gdk_screen_get_rgba_visual(screen) != nullptr;
}

bool takesWindowShadows(GdkScreen* screen) {
    if (!showsThroughWindows(screen)) return false;
#ifdef GDK_WINDOWING_X11
    if (GDK_IS_X11_SCREEN(screen))
        return gdk_x11_screen_supports_net_wm_hint(
                   screen, gdk_atom_intern_static_string("_GTK_FRAME_EXTENTS")) != FALSE;
#endif
    return true;
}
