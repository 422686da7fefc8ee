#pragma once

#include "backends/gdk/EventDispatcher.hpp"
#include "backends/gdk/LayerSurface.hpp"
#include "shells/desktop/OutsidePress.hpp"
#include "shells/desktop/WindowPlace.hpp"

#include <optional>

namespace desktop {

/// Where a drawer hangs: the middle of an edge of the screen, or a corner.
enum class ScreenEdge { Top, Bottom, Left, Right, TopLeft, TopRight, BottomLeft, BottomRight };

struct DrawerAnchor {
    ScreenEdge edge = ScreenEdge::Top;
    int margin = 8;  ///< Between the edges and the drawer, points.
};

/// A drawer at an edge or corner of the screen, above all windows. A press anywhere else dismisses
/// it.
class LayerPlace final : public WindowPlace {
 public:
    /// Display, events and shell outlive this.
    LayerPlace(GdkDisplay* display, windowing::EventDispatcher& events,
               windowing::LayerShell& shell, const DrawerAnchor& anchor);
    ~LayerPlace() override;

    GdkWindow* newWindow(const CGSize& size) override;
    CGSize availableSize(GdkWindow* window, const shell::PanelLook& look) const override;
    void arrange(GdkWindow* window, const shell::PanelLayout& layout,
                 const shell::PanelLook& look) override;
    void show(GdkWindow* window) override;
    void hide(GdkWindow* window) override;

 private:
    /// The wanted margin, reduced to what fits.
    int margin() const;
    windowing::LayerSetting setting() const;
    void watchOutside();

    windowing::EventDispatcher& events_;
    windowing::LayerShell& shell_;
    DrawerAnchor anchor_;
    CGSize size_;
    UIEdgeInsets shadow_;
    std::optional<windowing::LayerSurface> surface_;
    std::optional<OutsidePresses> outside_;
    guint idle_ = 0;  ///< The source that waits until the drawer is painted.
};

}  // namespace desktop
