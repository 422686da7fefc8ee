#pragma once

#include "backends/gdk/PopupGrab.hpp"
#include "shells/desktop/DrawerPlacement.hpp"
#include "shells/desktop/OutsidePress.hpp"
#include "shells/desktop/WindowPlace.hpp"

#include <optional>

namespace desktop {

/// A drawer beside an icon on X11, as a popup that the window manager does not control. A press
/// anywhere else dismisses it.
class PopupPlace final : public WindowPlace {
 public:
    /// `icon` is in screen coordinates; `gap` is the distance between the drawer and its
    /// surroundings. Points.
    PopupPlace(GdkDisplay* display, const CGPoint& icon, CGFloat gap);
    /// Whether that point of the screen lies on a panel.
    static bool isOnPanel(GdkDisplay* display, const CGPoint& point);

    GdkWindow* newWindow(const CGSize& size) override;
    CGSize availableSize(GdkWindow* window, const shell::PanelLook& look) const override;
    void arrange(GdkWindow* window, const shell::PanelLayout& layout,
                 const shell::PanelLook& look) override;
    void show(GdkWindow* window) override;
    void hide(GdkWindow* window) override;
    bool takesEvent(const GdkEvent& event) override;
    void screenChanged() override;

 private:
    MonitorArea monitor_;
    CGPoint icon_;
    CGFloat wantedGap_;
    CGFloat gap_ = 0;  ///< The wanted gap, reduced to what fits.
    CGRect panel_;     ///< In the window.
    OutsidePress outside_;
    std::optional<windowing::PopupGrab> input_;
};

}  // namespace desktop
