#pragma once

#include "shells/desktop/WindowPlace.hpp"

/// Where the window manager puts it, and the user after that.
class OrdinaryPlace final : public WindowPlace {
 public:
    using WindowPlace::WindowPlace;
    GdkWindow* newWindow(const CGSize& size) override;
    CGSize availableSize(GdkWindow* window, const PanelLook& look) const override;
    void arrange(GdkWindow* window, const PanelLayout& layout, const PanelLook& look) override;
    void show(GdkWindow* window) override { gdk_window_show(window); }
    void hide(GdkWindow* window) override { gdk_window_hide(window); }
    bool isAmongOthers() const override { return true; }
};
