#pragma once

#include "shells/panel/PanelLayout.hpp"

#include <gdk/gdk.h>

#include <functional>

namespace desktop {

/// How the panel's window is shown: as an ordinary window, beside the tray's icon, or on a layer.
/// One object for each showing. Main thread.
class WindowPlace {
 public:
    explicit WindowPlace(GdkDisplay* display) : display_(display) {}
    virtual ~WindowPlace() = default;
    WindowPlace(const WindowPlace&) = delete;
    WindowPlace& operator=(const WindowPlace&) = delete;

    /// Creates a hidden window in the size that it will be shown in, since some displays map a
    /// window in its initial size. The caller owns it.
    virtual GdkWindow* newWindow(const CGSize& size) = 0;
    /// The maximum size of the window for a panel with that look, in screen points. `window` is
    /// nullptr while there is none.
    virtual CGSize availableSize(GdkWindow* window, const shell::PanelLook& look) const = 0;
    /// Applies the layout's size and place to the window.
    virtual void arrange(GdkWindow* window, const shell::PanelLayout& layout,
                         const shell::PanelLook& look) = 0;
    virtual void show(GdkWindow* window) = 0;
    virtual void hide(GdkWindow* window) = 0;
    /// Whether it is an ordinary window, which the user may move and must be able to close. The
    /// others stay in place and close at a press beside them.
    virtual bool isAmongOthers() const { return false; }
    /// Handles an event that concerns the window's place, and returns whether it did.
    virtual bool takesEvent(const GdkEvent& /*event*/) { return false; }

    /// Monitors or their work areas may have changed.
    virtual void screenChanged() {}

    /// Called when the user has turned to another window. It may destroy this object.
    void setDismissHandler(std::function<void()> handler) { dismissHandler_ = std::move(handler); }

 protected:
    GdkDisplay* display() const { return display_; }
    /// This object may be destroyed by the call.
    void dismiss() const {
        if (const auto handler = dismissHandler_) handler();
    }
    GdkWindow* newWindowOfKind(GdkWindowType kind, GdkWindowTypeHint hint,
                               const CGSize& size) const;

 private:
    GdkDisplay* display_;
    std::function<void()> dismissHandler_;
};

/// An ordinary window: the window manager and the user decide its place.
class OrdinaryPlace final : public WindowPlace {
 public:
    using WindowPlace::WindowPlace;
    GdkWindow* newWindow(const CGSize& size) override;
    CGSize availableSize(GdkWindow* window, const shell::PanelLook& look) const override;
    void arrange(GdkWindow* window, const shell::PanelLayout& layout,
                 const shell::PanelLook& look) override;
    void show(GdkWindow* window) override { gdk_window_show(window); }
    void hide(GdkWindow* window) override { gdk_window_hide(window); }
    bool isAmongOthers() const override { return true; }
};

}  // namespace desktop
