#include "backends/gdk/GdkWindowShadow.hpp"

#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#endif

bool takesWindowShadows(GdkScreen* screen) {
    if (gdk_screen_is_composited(screen) == FALSE) return false;
    if (gdk_screen_get_rgba_visual(screen) == nullptr) return false;
#ifdef GDK_WINDOWING_X11
    if (GDK_IS_X11_SCREEN(screen))
        return gdk_x11_screen_supports_net_wm_hint(
                   screen, gdk_atom_intern_static_string("_GTK_FRAME_EXTENTS")) != FALSE;
#endif
    return true;
}
