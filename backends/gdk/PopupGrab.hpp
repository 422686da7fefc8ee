#pragma once

#include <gdk/gdk.h>

namespace windowing {

/// Grabs the pointer and the focus for an X11 window that the window manager does not manage, while
/// it exists: the window receives presses anywhere on the screen, with points outside it, and the
/// keys unless the window manager objects. The desktop's own keys, such as the volume keys, keep
/// working. Main thread.
class PopupGrab {
 public:
    /// The window must be shown, and outlive this.
    explicit PopupGrab(GdkWindow* window);
    ~PopupGrab();
    PopupGrab(const PopupGrab&) = delete;
    PopupGrab& operator=(const PopupGrab&) = delete;

 private:
    bool takePointer();
    void retry();
    void takeKeys();
    void giveKeysBack();

    GdkWindow* window_;
    GdkSeat* seat_;
    bool hasPointer_ = false;
    int retriesLeft_ = 50;
    guint timer_ = 0;
    unsigned long formerFocus_ = 0;  ///< The window that had the keys; 0 for none.
};

}  // namespace windowing
