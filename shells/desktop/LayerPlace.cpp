#include "shells/desktop/LayerPlace.hpp"

#include <algorithm>
#include <utility>

namespace desktop {
namespace {

windowing::LayerEdges edgesOf(ScreenEdge edge) {
    switch (edge) {
        case ScreenEdge::Top:
            return windowing::LayerEdges::Top;
        case ScreenEdge::Bottom:
            return windowing::LayerEdges::Bottom;
        case ScreenEdge::Left:
            return windowing::LayerEdges::Left;
        case ScreenEdge::Right:
            return windowing::LayerEdges::Right;
        case ScreenEdge::TopLeft:
            return windowing::LayerEdges::Top | windowing::LayerEdges::Left;
        case ScreenEdge::TopRight:
            return windowing::LayerEdges::Top | windowing::LayerEdges::Right;
        case ScreenEdge::BottomLeft:
            return windowing::LayerEdges::Bottom | windowing::LayerEdges::Left;
        case ScreenEdge::BottomRight:
            break;
    }
    return windowing::LayerEdges::Bottom | windowing::LayerEdges::Right;
}

/// Wayland reports neither the monitor that a window will be on nor the space that panels leave.
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

LayerPlace::LayerPlace(GdkDisplay* display, windowing::EventDispatcher& events,
                       windowing::LayerShell& shell, const DrawerAnchor& anchor)
    : WindowPlace(display), events_(events), shell_(shell), anchor_(anchor) {}

/// In a corner, the margins of both edges.
int LayerPlace::margin() const {
    const CGSize screen = smallestMonitor(display());
    return static_cast<int>(shell::gapWithin(static_cast<CGFloat>(anchor_.margin), screen));
}

LayerPlace::~LayerPlace() {
    if (idle_ != 0) g_source_remove(idle_);
}

GdkWindow* LayerPlace::newWindow(const CGSize& size) {
    GdkWindow* window = newWindowOfKind(GDK_WINDOW_TOPLEVEL, GDK_WINDOW_TYPE_HINT_POPUP_MENU, size);
    windowing::LayerSurface::prepare(window);
    return window;
}

/// The panel stays on the screen; its shadow may leave it.
CGSize LayerPlace::availableSize(GdkWindow* /*window*/, const shell::PanelLook& look) const {
    const CGSize screen = smallestMonitor(display());
    const UIEdgeInsets shadow = shell::panelMargins(look);
    const CGFloat gaps = 2 * static_cast<CGFloat>(margin());
    return {screen.width - gaps + shadow.left + shadow.right,
            screen.height - gaps + shadow.top + shadow.bottom};
}

void LayerPlace::arrange(GdkWindow* window, const shell::PanelLayout& layout,
                         const shell::PanelLook& look) {
    size_ = layout.window;
    shadow_ = shell::panelMargins(look);
    const auto width = static_cast<int>(size_.width);
    const auto height = static_cast<int>(size_.height);
    if (surface_)
        surface_->change(setting(), width, height);
    else
        gdk_window_resize(window, width, height);
}

/// The margin is the panel's; the shadow may reach beyond the edge.
windowing::LayerSetting LayerPlace::setting() const {
    const auto beyond = [margin = margin()](CGFloat shadow) {
        return margin - static_cast<int>(shadow);
    };
    windowing::LayerSetting setting;
    setting.edges = edgesOf(anchor_.edge);
    setting.keys = windowing::LayerKeys::All;
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
        idle_ = g_idle_add(painted, this);  // After the first picture, without delaying it.
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

}  // namespace desktop
