#include "backends/gdk/PopupGrab.hpp"

#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#endif

namespace windowing {

PopupGrab::PopupGrab(GdkWindow* window)
    : window_(window), seat_(gdk_display_get_default_seat(gdk_window_get_display(window))) {
    takeKeys();
    hasPointer_ = takePointer();
    if (hasPointer_) return;
    // The tray that was clicked may hold the pointer until its button is let go.
    constexpr guint retryMilliseconds = 20;
    const auto again = +[](gpointer input) -> gboolean {
        static_cast<PopupGrab*>(input)->retry();
        return static_cast<PopupGrab*>(input)->timer_ != 0 ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
    };
    timer_ = g_timeout_add(retryMilliseconds, again, this);
}

PopupGrab::~PopupGrab() {
    if (timer_ != 0) g_source_remove(timer_);
    if (hasPointer_) gdk_seat_ungrab(seat_);
    giveKeysBack();
}

bool PopupGrab::takePointer() {
    // What is pressed within our own windows goes to them as ever.
    constexpr gboolean ownerEvents = TRUE;
    return gdk_seat_grab(seat_, window_, GDK_SEAT_CAPABILITY_ALL_POINTING, ownerEvents, nullptr,
                         nullptr, nullptr, nullptr) == GDK_GRAB_SUCCESS;
}

void PopupGrab::retry() {
    hasPointer_ = takePointer();
    if (hasPointer_ || --retriesLeft_ == 0) timer_ = 0;
}

#ifdef GDK_WINDOWING_X11

void PopupGrab::takeKeys() {
    GdkDisplay* display = gdk_window_get_display(window_);
    if (!GDK_IS_X11_DISPLAY(display)) return;
    Display* server = gdk_x11_display_get_xdisplay(display);
    int revertTo = 0;
    XGetInputFocus(server, &formerFocus_, &revertTo);
    gdk_x11_display_error_trap_push(display);
    XSetInputFocus(server, gdk_x11_window_get_xid(window_), RevertToParent, CurrentTime);
    gdk_x11_display_error_trap_pop_ignored(display);
}

/// Unless another window has the focus by now.
void PopupGrab::giveKeysBack() {
    GdkDisplay* display = gdk_window_get_display(window_);
    if (!GDK_IS_X11_DISPLAY(display) || formerFocus_ == 0) return;
    Display* server = gdk_x11_display_get_xdisplay(display);
    Window focus = 0;
    int revertTo = 0;
    XGetInputFocus(server, &focus, &revertTo);
    if (focus != gdk_x11_window_get_xid(window_)) return;
    gdk_x11_display_error_trap_push(display);
    XSetInputFocus(server, formerFocus_, RevertToPointerRoot, CurrentTime);
    gdk_x11_display_error_trap_pop_ignored(display);
}

#else

void PopupGrab::takeKeys() {}
void PopupGrab::giveKeysBack() {}

#endif

}  // namespace windowing
