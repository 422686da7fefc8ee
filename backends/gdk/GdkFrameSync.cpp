#include "backends/gdk/GdkFrameSync.hpp"

#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>

#include <initializer_list>

namespace {

// What GDK keeps a window's frames in step with: a resize, and the word that one was shown.
bool isManaged(GdkScreen* screen) {
    for (const char* hint : {"_NET_WM_SYNC_REQUEST", "_NET_WM_FRAME_DRAWN"})
        if (gdk_x11_screen_supports_net_wm_hint(screen, gdk_atom_intern_static_string(hint)))
            return true;
    return false;
}

}  // namespace

void skipFrameSyncIfUnmanaged(GdkWindow* window) {
    if (GDK_IS_X11_WINDOW(window) && !isManaged(gdk_window_get_screen(window)))
        gdk_x11_window_set_frame_sync_enabled(window, FALSE);
}

#else

void skipFrameSyncIfUnmanaged(GdkWindow* /*window*/) {}

#endif
