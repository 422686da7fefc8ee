#include "shells/desktop/LayerPlace.hpp"

#include <algorithm>
#include <utility>

namespace {

LayerEdges edgesOf(ScreenEdge edge) {
    switch (edge) {
        case ScreenEdge::Top:
            return LayerEdges::Top;
        case ScreenEdge::Bottom:
            return LayerEdges::Bottom;
        case ScreenEdge::Left:
            return LayerEdges::Left;
        case ScreenEdge::Right:
            return LayerEdges::Right;
        case ScreenEdge::TopLeft:
            return LayerEdges::Top | LayerEdges::Left;
        case ScreenEdge::TopRight:
            return LayerEdges::Top | LayerEdges::Right;
        case ScreenEdge::BottomLeft:
            return LayerEdges::Bottom | LayerEdges::Left;
        case ScreenEdge::BottomRight:
            break;
    }
    return LayerEdges::Bottom | LayerEdges::Right;
}

/// On Wayland nobody says on which monitor a window will come, nor what panels leave of it.
CGSize smallestMonitor(GdkDisplay* display) {
    GdkRectangle least = {0, 0, 1024, 768};  // A display may have lost its last monitor.
    for (int i = 0; i < gdk_display_get_n_monitors(display); ++i) {
        GdkRectangle area;
        gdk_monitor_get_geometry(gdk_display_get_monitor(display, i), &area);
        least.width = i == 0 ? area.width : std::min(least.width, area.width);
        least.height = i == 0 ? area.height : std::min(least.height, area.height);
    }
    return {static_cast<CGFloat>(least.width), static_cast<CGFloat>(least.height)};
}

}  // namespace

LayerPlace::LayerPlace(GdkDisplay* display, GdkEvents& events, GdkLayerShell& shell,
                       const DrawerAnchor& anchor)
    : WindowPlace(display), events_(events), shell_(shell), anchor_(anchor) {}

/// Of both edges that meet in a corner, too.
int LayerPlace::margin() const {
    const CGSize screen = smallestMonitor(display());
    return static_cast<int>(gapWithin(static_cast<CGFloat>(anchor_.margin), screen));
}

LayerPlace::~LayerPlace() {
    if (idle_ != 0) g_source_remove(idle_);
}

GdkWindow* LayerPlace::newWindow(const CGSize& size) {
    GdkWindow* window = newWindowOfKind(GDK_WINDOW_TOPLEVEL, GDK_WINDOW_TYPE_HINT_POPUP_MENU, size);
    GdkLayerSurface::prepare(window);
    return window;
}

/// The panel keeps within the screen; its shadow need not.
CGSize LayerPlace::availableSize(GdkWindow* /*window*/, const PanelLook& look) const {
    const CGSize screen = smallestMonitor(display());
    const UIEdgeInsets shadow = panelMargins(look);
    const CGFloat gaps = 2 * static_cast<CGFloat>(margin());
    return {screen.width - gaps + shadow.left + shadow.right,
            screen.height - gaps + shadow.top + shadow.bottom};
}

void LayerPlace::arrange(GdkWindow* window, const PanelLayout& layout, const PanelLook& look) {
    size_ = layout.window;
    shadow_ = panelMargins(look);
    const auto width = static_cast<int>(size_.width);
    const auto height = static_cast<int>(size_.height);
    if (surface_)
        surface_->change(setting(), width, height);
    else
        gdk_window_resize(window, width, height);
}

/// The shadow may reach beyond the edge: what keeps the margin is the panel.
LayerSetting LayerPlace::setting() const {
    const auto beyond = [margin = margin()](CGFloat shadow) {
        return margin - static_cast<int>(shadow);
    };
    LayerSetting setting;
    setting.edges = edgesOf(anchor_.edge);
    setting.keys = LayerKeys::All;
    setting.top = beyond(shadow_.top);
    setting.right = beyond(shadow_.right);
    setting.bottom = beyond(shadow_.bottom);
    setting.left = beyond(shadow_.left);
    return setting;
}

void LayerPlace::show(GdkWindow* window) {
    surface_.emplace(shell_, window, setting(), static_cast<int>(size_.width),
                     static_cast<int>(size_.height));
    surface_->setClosedHandler([this] { dismiss(); });
    surface_->setReadyHandler([this] {
        const auto painted = +[](gpointer place) -> gboolean {
            static_cast<LayerPlace*>(place)->watchOutside();
            return G_SOURCE_REMOVE;
        };
        idle_ = g_idle_add(painted, this);  // After the first picture, which is not to wait.
    });
}

void LayerPlace::watchOutside() {
    idle_ = 0;
    outside_.emplace(display(), events_, shell_, [this] { dismiss(); });
}

void LayerPlace::hide(GdkWindow* /*window*/) {
    if (idle_ != 0) g_source_remove(std::exchange(idle_, 0));
    outside_.reset();
    surface_.reset();
}
