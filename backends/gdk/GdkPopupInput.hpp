#pragma once

#include <gdk/gdk.h>

/// Pointer and keyboard for a window on X11 that the window manager leaves alone, for as long as
/// this lives: presses anywhere on the screen come to the window, those elsewhere with points
/// outside of it, and the keys too unless the window manager objects. Keys that the desktop keeps
/// for itself, as those for the volume, go on working. Main thread.
class GdkPopupInput {
 public:
    /// The window must be shown, and outlive this.
    explicit GdkPopupInput(GdkWindow* window);
    ~GdkPopupInput();
    GdkPopupInput(const GdkPopupInput&) = delete;
    GdkPopupInput& operator=(const GdkPopupInput&) = delete;

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
