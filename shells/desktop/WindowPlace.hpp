#pragma once

#include "shells/panel/PanelLayout.hpp"

#include <gdk/gdk.h>

#include <functional>

/// How the panel's window comes onto the screen: as one window among others, beside the tray's
/// icon, or on a layer of its own. One for each showing. Main thread.
class WindowPlace {
 public:
    explicit WindowPlace(GdkDisplay* display) : display_(display) {}
    virtual ~WindowPlace() = default;
    WindowPlace(const WindowPlace&) = delete;
    WindowPlace& operator=(const WindowPlace&) = delete;

    /// A hidden window, in the size that it will be shown in: some displays map a window in the
    /// size it began with. The caller owns it.
    virtual GdkWindow* newWindow(const CGSize& size) = 0;
    /// What the window may take at most with a panel that looks so, in points of the screen.
    /// `window` is nullptr while there is none.
    virtual CGSize availableSize(GdkWindow* window, const PanelLook& look) const = 0;
    /// Gives the window the size, and the place, of that layout.
    virtual void arrange(GdkWindow* window, const PanelLayout& layout, const PanelLook& look) = 0;
    virtual void show(GdkWindow* window) = 0;
    virtual void hide(GdkWindow* window) = 0;
    /// Whether it is one window among others, which the user may move and must be able to close;
    /// the others stay where they are and end by a press beside them.
    virtual bool isAmongOthers() const { return false; }
    /// Takes an event of the window that is about its place, and is for nobody else then.
    virtual bool takesEvent(const GdkEvent& /*event*/) { return false; }

    /// Monitors, or what panels leave of them, may be others than before.
    virtual void screenChanged() {}

    /// Called when the user has turned to something else. It may end this.
    void setDismissHandler(std::function<void()> handler) { dismissHandler_ = std::move(handler); }

 protected:
    GdkDisplay* display() const { return display_; }
    /// Nothing of this may be used afterwards.
    void dismiss() const {
        if (const auto handler = dismissHandler_) handler();
    }
    GdkWindow* newWindowOfKind(GdkWindowType kind, GdkWindowTypeHint hint,
                               const CGSize& size) const;

 private:
    GdkDisplay* display_;
    std::function<void()> dismissHandler_;
};
