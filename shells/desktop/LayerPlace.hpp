#pragma once

#include "backends/gdk/GdkEvents.hpp"
#include "backends/gdk/GdkLayerSurface.hpp"
#include "shells/desktop/OutsidePresses.hpp"
#include "shells/desktop/WindowPlace.hpp"

#include <optional>

/// What of the screen a drawer hangs from: the middle of an edge, or a corner.
enum class ScreenEdge { Top, Bottom, Left, Right, TopLeft, TopRight, BottomLeft, BottomRight };

struct DrawerAnchor {
    ScreenEdge edge = ScreenEdge::Top;
    int margin = 8;  ///< Between the edges and the drawer, points.
};

/// Hanging from an edge or a corner of the screen, above all windows. A press anywhere else
/// dismisses it.
class LayerPlace final : public WindowPlace {
 public:
    /// Display, events and shell outlive this.
    LayerPlace(GdkDisplay* display, GdkEvents& events, GdkLayerShell& shell,
               const DrawerAnchor& anchor);
    ~LayerPlace() override;

    GdkWindow* newWindow(const CGSize& size) override;
    CGSize availableSize(GdkWindow* window, const PanelLook& look) const override;
    void arrange(GdkWindow* window, const PanelLayout& layout, const PanelLook& look) override;
    void show(GdkWindow* window) override;
    void hide(GdkWindow* window) override;

 private:
    /// What there is room for, of the one that is wanted.
    int margin() const;
    LayerSetting setting() const;
    void watchOutside();

    GdkEvents& events_;
    GdkLayerShell& shell_;
    DrawerAnchor anchor_;
    CGSize size_;
    UIEdgeInsets shadow_;
    std::optional<GdkLayerSurface> surface_;
    std::optional<OutsidePresses> outside_;
    guint idle_ = 0;  ///< The source that waits until the drawer is painted.
};
