#include "shells/desktop/WindowPlace.hpp"

#include "backends/gdk/ViewHost.hpp"
#include "shells/common/Installation.hpp"

#include <string>

namespace desktop {
namespace {

constexpr const char* instanceName = "tarnwick";

/// Tells the window system that the shadow's margins do not count as the window's size. Some window
/// systems enlarge the window by them, so a resize must follow.
void marginWindow(GdkWindow* window, const shell::PanelLook& look) {
    const UIEdgeInsets margins = shell::panelMargins(look);
    gdk_window_set_shadow_width(window, static_cast<int>(margins.left),
                                static_cast<int>(margins.right), static_cast<int>(margins.top),
                                static_cast<int>(margins.bottom));
}

}  // namespace

GdkWindow* WindowPlace::newWindowOfKind(GdkWindowType kind, GdkWindowTypeHint hint,
                                        const CGSize& size) const {
    GdkScreen* screen = gdk_display_get_default_screen(display_);
    std::string name = shell::applicationName;
    std::string instance = instanceName;
    std::string application = shell::applicationId;
    GdkWindowAttr attributes = {};
    attributes.title = name.data();
    attributes.event_mask =
        windowing::ViewHost::eventMask | GDK_FOCUS_CHANGE_MASK | GDK_KEY_RELEASE_MASK;
    attributes.width = static_cast<int>(size.width);
    attributes.height = static_cast<int>(size.height);
    attributes.wclass = GDK_INPUT_OUTPUT;
    attributes.visual = gdk_screen_get_rgba_visual(screen);
    attributes.window_type = kind;
    attributes.type_hint = hint;
    attributes.wmclass_name = instance.data();
    attributes.wmclass_class = application.data();
    const int given =
        GDK_WA_TITLE | GDK_WA_TYPE_HINT | GDK_WA_WMCLASS | (attributes.visual ? GDK_WA_VISUAL : 0);
    GdkWindow* window = gdk_window_new(gdk_screen_get_root_window(screen), &attributes, given);
    gdk_window_set_decorations(window, static_cast<GdkWMDecoration>(0));
    return window;
}

GdkWindow* OrdinaryPlace::newWindow(const CGSize& size) {
    return newWindowOfKind(GDK_WINDOW_TOPLEVEL, GDK_WINDOW_TYPE_HINT_DIALOG, size);
}

/// The work area of the window's monitor or, without a visible window, of the first one.
CGSize OrdinaryPlace::availableSize(GdkWindow* window, const shell::PanelLook& /*look*/) const {
    const bool visible = window != nullptr && gdk_window_is_visible(window) != FALSE;
    GdkMonitor* monitor = visible ? gdk_display_get_monitor_at_window(display(), window)
                                  : gdk_display_get_primary_monitor(display());
    if (monitor == nullptr) monitor = gdk_display_get_monitor(display(), 0);
    GdkRectangle area = {0, 0, 1024, 768};  // A display may have lost its last monitor.
    if (monitor) gdk_monitor_get_workarea(monitor, &area);
    return {static_cast<CGFloat>(area.width), static_cast<CGFloat>(area.height)};
}

void OrdinaryPlace::arrange(GdkWindow* window, const shell::PanelLayout& layout,
                            const shell::PanelLook& look) {
    const auto width = static_cast<int>(layout.window.width);
    const auto height = static_cast<int>(layout.window.height);
    GdkGeometry fixed = {};
    fixed.min_width = fixed.max_width = width;
    fixed.min_height = fixed.max_height = height;
    gdk_window_set_geometry_hints(
        window, &fixed, static_cast<GdkWindowHints>(GDK_HINT_MIN_SIZE | GDK_HINT_MAX_SIZE));
    marginWindow(window, look);
    gdk_window_resize(window, width, height);
}

}  // namespace desktop
