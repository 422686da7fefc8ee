#include "shells/desktop/OutsidePress.hpp"

#include <utility>

namespace desktop {
namespace {

constexpr int eventMask =
    GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK | GDK_TOUCH_MASK | GDK_EXPOSURE_MASK;

GdkWindow* newSheet(GdkDisplay* display) {
    GdkScreen* screen = gdk_display_get_default_screen(display);
    GdkWindowAttr attributes = {};
    attributes.event_mask = eventMask;
    attributes.width = 1;
    attributes.height = 1;
    attributes.wclass = GDK_INPUT_OUTPUT;
    attributes.visual = gdk_screen_get_rgba_visual(screen);
    attributes.window_type = GDK_WINDOW_TOPLEVEL;
    return gdk_window_new(gdk_screen_get_root_window(screen), &attributes,
                          attributes.visual ? GDK_WA_VISUAL : 0);
}

void paintNothing(GdkWindow* window, const cairo_region_t* region) {
    GdkDrawingContext* frame = gdk_window_begin_draw_frame(window, region);
    cairo_t* context = gdk_drawing_context_get_cairo_context(frame);
    cairo_set_operator(context, CAIRO_OPERATOR_CLEAR);
    cairo_paint(context);
    gdk_window_end_draw_frame(window, frame);
}

}  // namespace

OutsidePress::Step OutsidePress::step(const GdkEvent& event, bool isOutside) {
    switch (event.type) {
        case GDK_BUTTON_PRESS:
        case GDK_TOUCH_BEGIN:
            if (!isOutside) return Step::None;
            isHeld_ = true;
            return Step::Part;
        case GDK_BUTTON_RELEASE:
        case GDK_TOUCH_END:
        case GDK_TOUCH_CANCEL:
        case GDK_GRAB_BROKEN:
            return std::exchange(isHeld_, false) ? Step::End : Step::None;
        default:
            return Step::None;
    }
}

OutsidePresses::OutsidePresses(GdkDisplay* display, windowing::EventDispatcher& events,
                               windowing::LayerShell& shell, std::function<void()> pressed)
    : events_(events), pressed_(std::move(pressed)) {
    for (int i = 0; i < gdk_display_get_n_monitors(display); ++i)
        sheets_.push_back(sheetOver(gdk_display_get_monitor(display, i), shell));
}

OutsidePresses::~OutsidePresses() {
    for (Sheet& sheet : sheets_) {
        events_.setHandler(sheet.window.get(), {});
        sheet.surface.reset();
    }
}

OutsidePresses::Sheet OutsidePresses::sheetOver(GdkMonitor* monitor, windowing::LayerShell& shell) {
    Sheet sheet;
    sheet.window.reset(newSheet(gdk_monitor_get_display(monitor)));
    windowing::LayerSurface::prepare(sheet.window.get());
    events_.setHandler(sheet.window.get(), [this](const GdkEvent& event) { handleEvent(event); });
    windowing::LayerSetting setting;
    setting.layer = windowing::Layer::Top;
    setting.edges = windowing::LayerEdges::All;
    setting.panels = windowing::LayerSetting::Panels::Cover;
    setting.monitor = monitor;
    sheet.surface =
        std::make_unique<windowing::LayerSurface>(shell, sheet.window.get(), setting, 0, 0);
    return sheet;
}

void OutsidePresses::handleEvent(const GdkEvent& event) {
    if (event.type == GDK_EXPOSE) return paintNothing(event.any.window, event.expose.region);
    if (press_.step(event, true) != OutsidePress::Step::End) return;
    const auto pressed = pressed_;  // A copy: it may end this.
    pressed();
}

}  // namespace desktop
