#include "shells/desktop/PopupPlace.hpp"

#include "backends/gdk/X11Windows.hpp"

#include <vector>

namespace desktop {
namespace {

CGRect rectOf(const GdkRectangle& rect) {
    return CGRectMake(static_cast<CGFloat>(rect.x), static_cast<CGFloat>(rect.y),
                      static_cast<CGFloat>(rect.width), static_cast<CGFloat>(rect.height));
}

std::vector<MonitorArea> monitorsOf(GdkDisplay* display) {
    std::vector<MonitorArea> monitors;
    for (int i = 0; i < gdk_display_get_n_monitors(display); ++i) {
        GdkMonitor* monitor = gdk_display_get_monitor(display, i);
        GdkRectangle whole;
        GdkRectangle work;
        gdk_monitor_get_geometry(monitor, &whole);
        gdk_monitor_get_workarea(monitor, &work);
        monitors.push_back({rectOf(whole), rectOf(work)});
    }
    return monitors;
}

/// The area around that point, without a panel that may be there.
MonitorArea monitorAround(GdkDisplay* display, const CGPoint& point) {
    const std::vector<MonitorArea> monitors = monitorsOf(display);
    // A display may have lost its last monitor.
    const MonitorArea* found = monitorAt(point, monitors);
    const MonitorArea monitor =
        found ? *found : MonitorArea{{{0, 0}, {1024, 768}}, {{0, 0}, {1024, 768}}};
    const auto window = windowing::topmostWindowAt(display, point);
    return window ? withoutPanel(monitor, *window) : monitor;
}

std::optional<CGPoint> pressOf(const GdkEvent& event) {
    if (event.type == GDK_BUTTON_PRESS)
        return CGPoint{static_cast<CGFloat>(event.button.x), static_cast<CGFloat>(event.button.y)};
    if (event.type == GDK_TOUCH_BEGIN)
        return CGPoint{static_cast<CGFloat>(event.touch.x), static_cast<CGFloat>(event.touch.y)};
    return std::nullopt;
}

}  // namespace

PopupPlace::PopupPlace(GdkDisplay* display, const CGPoint& icon, CGFloat gap)
    : WindowPlace(display), icon_(icon), wantedGap_(gap) {
    PopupPlace::screenChanged();
}

void PopupPlace::screenChanged() {
    monitor_ = monitorAround(display(), icon_);
    gap_ = shell::gapWithin(wantedGap_, monitor_.work.size);
}

bool PopupPlace::isOnPanel(GdkDisplay* display, const CGPoint& point) {
    const MonitorArea monitor = monitorAround(display, point);
    return CGRectContainsPoint(monitor.whole, point) && !CGRectContainsPoint(monitor.work, point);
}

GdkWindow* PopupPlace::newWindow(const CGSize& size) {
    return newWindowOfKind(GDK_WINDOW_TEMP, GDK_WINDOW_TYPE_HINT_POPUP_MENU, size);
}

/// The panel stays in the work area; its shadow may leave it.
CGSize PopupPlace::availableSize(GdkWindow* /*window*/, const shell::PanelLook& look) const {
    const UIEdgeInsets shadow = shell::panelMargins(look);
    const CGSize room = roomForDrawer(monitor_, gap_);
    return {room.width + shadow.left + shadow.right, room.height + shadow.top + shadow.bottom};
}

void PopupPlace::arrange(GdkWindow* window, const shell::PanelLayout& layout,
                         const shell::PanelLook& /*look*/) {
    panel_ = layout.panel;
    const CGPoint origin = drawerOrigin(icon_, panel_.size, monitor_, gap_);
    gdk_window_move_resize(window, static_cast<int>(origin.x - panel_.origin.x),
                           static_cast<int>(origin.y - panel_.origin.y),
                           static_cast<int>(layout.window.width),
                           static_cast<int>(layout.window.height));
}

void PopupPlace::show(GdkWindow* window) {
    gdk_window_show(window);
    input_.emplace(window);
}

void PopupPlace::hide(GdkWindow* window) {
    input_.reset();
    gdk_window_hide(window);
}

bool PopupPlace::takesEvent(const GdkEvent& event) {
    const std::optional<CGPoint> at = pressOf(event);
    const auto step = outside_.step(event, at && !CGRectContainsPoint(panel_, *at));
    if (step == OutsidePress::Step::End) dismiss();
    return step != OutsidePress::Step::None;
}

}  // namespace desktop
