#include "backends/gdk/GdkWindowShadow.hpp"
#include "shells/common/ApplicationId.hpp"
#include "shells/desktop/DesktopWindow.hpp"
#include "shells/desktop/WindowOutline.hpp"

namespace {

constexpr const char* instanceName = "tarnwick";

PanelEdge edgeOn(GdkScreen* screen) {
    return takesWindowShadows(screen) ? PanelEdge::Soft : PanelEdge::Hard;
}

/// Of the monitor that the window is on, in points; without a visible window, of the first one.
CGSize availableSize(GdkDisplay* display, GdkWindow* window) {
    const bool visible = window != nullptr && gdk_window_is_visible(window) != FALSE;
    GdkMonitor* monitor = visible ? gdk_display_get_monitor_at_window(display, window)
                                  : gdk_display_get_primary_monitor(display);
    if (monitor == nullptr) monitor = gdk_display_get_monitor(display, 0);
    GdkRectangle area = {0, 0, 1024, 768};  // A display may have lost its last monitor.
    if (monitor) gdk_monitor_get_workarea(monitor, &area);
    return {static_cast<CGFloat>(area.width), static_cast<CGFloat>(area.height)};
}

}  // namespace

/// In the size that it will be shown in: some displays map a window in the size it began with.
GdkWindow* DesktopWindow::newWindow(GdkDisplay* display, const CGSize& size) {
    GdkScreen* screen = gdk_display_get_default_screen(display);
    std::string name = applicationName;
    std::string instance = instanceName;
    std::string application = applicationId;
    GdkWindowAttr attributes = {};
    attributes.title = name.data();
    attributes.event_mask = GdkViewHost::eventMask | GDK_FOCUS_CHANGE_MASK | GDK_KEY_RELEASE_MASK;
    attributes.width = static_cast<int>(size.width);
    attributes.height = static_cast<int>(size.height);
    attributes.wclass = GDK_INPUT_OUTPUT;
    attributes.visual = gdk_screen_get_rgba_visual(screen);
    attributes.window_type = GDK_WINDOW_TOPLEVEL;
    attributes.type_hint = GDK_WINDOW_TYPE_HINT_DIALOG;
    attributes.wmclass_name = instance.data();
    attributes.wmclass_class = application.data();
    const int given =
        GDK_WA_TITLE | GDK_WA_TYPE_HINT | GDK_WA_WMCLASS | (attributes.visual ? GDK_WA_VISUAL : 0);
    GdkWindow* window = gdk_window_new(gdk_screen_get_root_window(screen), &attributes, given);
    gdk_window_set_decorations(window, static_cast<GdkWMDecoration>(0));
    return window;
}

/// Of what there is to show on this screen now.
PanelLayout DesktopWindow::wantedLayout() {
    edge_ = edgeOn(screen_);
    shown_ = panelContent(widget_);
    shown_.size.height += panel_->noticeHeight();
    panel_->setWidgetView(shown_.view);
    return panelLayout(shown_.size, availableSize(display_, window_.get()), edge_);
}

void DesktopWindow::layout() {
    const PanelLayout wanted = wantedLayout();
    const auto width = static_cast<int>(wanted.window.width);
    const auto height = static_cast<int>(wanted.window.height);
    GdkGeometry fixed = {};
    fixed.min_width = fixed.max_width = width;
    fixed.min_height = fixed.max_height = height;
    gdk_window_set_geometry_hints(
        window_.get(), &fixed, static_cast<GdkWindowHints>(GDK_HINT_MIN_SIZE | GDK_HINT_MAX_SIZE));
    marginWindow(window_.get(), edge_);
    gdk_window_resize(window_.get(), width, height);
    applyLayout(wanted);
}

/// The window manager has the last word.
void DesktopWindow::windowHasSize(const CGSize& size) {
    if (size == size_) return;
    applyLayout(panelLayoutInWindow(shown_.size, size, edge_));
}

void DesktopWindow::applyLayout(const PanelLayout& layout) {
    size_ = layout.window;
    content_->setFrame({{0, 0}, layout.window});
    panel_->setLayout(layout, edge_);
    outlineWindow(window_.get(), layout, edge_);
}
