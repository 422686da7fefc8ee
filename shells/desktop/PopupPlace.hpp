#pragma once

#include "backends/gdk/GdkPopupInput.hpp"
#include "shells/desktop/DrawerPlacement.hpp"
#include "shells/desktop/OutsidePress.hpp"
#include "shells/desktop/WindowPlace.hpp"

#include <optional>

/// Beside an icon on an X11 screen, out of the window manager's hands. A press anywhere else
/// dismisses it.
class PopupPlace final : public WindowPlace {
 public:
    /// `icon` is on the screen, `gap` what is kept between the drawer and what is around it;
    /// points.
    PopupPlace(GdkDisplay* display, const CGPoint& icon, CGFloat gap);
    /// Whether that point of the screen lies on a panel.
    static bool isOnPanel(GdkDisplay* display, const CGPoint& point);

    GdkWindow* newWindow(const CGSize& size) override;
    CGSize availableSize(GdkWindow* window, const PanelLook& look) const override;
    void arrange(GdkWindow* window, const PanelLayout& layout, const PanelLook& look) override;
    void show(GdkWindow* window) override;
    void hide(GdkWindow* window) override;
    bool takesEvent(const GdkEvent& event) override;
    void screenChanged() override;

 private:
    MonitorArea monitor_;
    CGPoint icon_;
    CGFloat wantedGap_;
    CGFloat gap_ = 0;  ///< What there is room for.
    CGRect panel_;     ///< In the window.
    OutsidePress outside_;
    std::optional<GdkPopupInput> input_;
};
