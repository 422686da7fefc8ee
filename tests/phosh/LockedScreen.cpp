#include "tests/phosh/LockedScreen.hpp"

#include <algorithm>
#include <stdexcept>

namespace test {
namespace {

constexpr const char* extensionPoint = "phosh-lockscreen-widget";

}  // namespace

GType pluginsWidget() {
    static const GType type = [] {
        GIOExtensionPoint* point = g_io_extension_point_register(extensionPoint);
        g_io_extension_point_set_required_type(point, GTK_TYPE_WIDGET);
        GIOModule* module = g_io_module_new(TEST_PHOSH_PLUGIN);
        if (g_type_module_use(G_TYPE_MODULE(module)) == FALSE)
            throw std::runtime_error("the plugin cannot be loaded");
        GIOExtension* extension = g_io_extension_point_get_extension_by_name(point, "tarnwick");
        if (!extension) throw std::runtime_error("the plugin brings no widget");
        return g_io_extension_get_type(extension);
    }();
    return type;
}

LockedScreen::LockedScreen(int width, int height) : width_(width), height_(height) {
    window_ = gtk_window_new(GTK_WINDOW_POPUP);
    gtk_window_resize(GTK_WINDOW(window_), width, height);
    // It takes no size from its pages, and clips them, as the shell's does.
    pages_ = gtk_layout_new(nullptr, nullptr);
    widget_ = static_cast<GtkWidget*>(g_object_new(pluginsWidget(), nullptr));
    gtk_layout_put(GTK_LAYOUT(pages_), widget_, 0, 0);
    gtk_container_add(GTK_CONTAINER(window_), pages_);
    g_signal_connect(pages_, "event", G_CALLBACK(keep), this);
    gtk_widget_show(widget_);
    gtk_widget_show(pages_);
}

LockedScreen::~LockedScreen() {
    gtk_widget_destroy(window_);
}

gboolean LockedScreen::keep(GtkWidget* /*widget*/, GdkEvent* event, gpointer screen) {
    static_cast<LockedScreen*>(screen)->passed_.push_back(event->type);
    return FALSE;
}

std::size_t LockedScreen::passedOn(GdkEventType type) const {
    return static_cast<std::size_t>(std::ranges::count(passed_, type));
}

bool LockedScreen::isLaidOut() const {
    return gtk_widget_get_allocated_width(widget_) == width_ &&
           gtk_widget_get_allocated_height(widget_) == height_ &&
           gdk_window_get_width(gtk_widget_get_window(pages_)) == width_;
}

void LockedScreen::show(int page) {
    page_ = page;
    place();
    gtk_widget_show(window_);
}

void LockedScreen::place() {
    gtk_widget_set_size_request(widget_, width_, height_);
    gtk_layout_move(GTK_LAYOUT(pages_), widget_, -page_ * width_, 0);
}

void LockedScreen::turnAway() {
    page_ = 1;
    place();
}

void LockedScreen::turnBack() {
    page_ = 0;
    place();
}

void LockedScreen::hide() {
    gtk_widget_hide(pages_);
}

void LockedScreen::resize(int width, int height) {
    width_ = width;
    height_ = height;
    gtk_window_resize(GTK_WINDOW(window_), width, height);
    place();
}

void LockedScreen::send(GdkEvent* event, double x, double y) {
    GdkWindow* window = gtk_widget_get_window(widget_);
    event->any.window = GDK_WINDOW(g_object_ref(window));
    gdk_event_set_device(
        event, gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_display_get_default())));
    int originX = 0;
    int originY = 0;
    gdk_window_get_origin(window, &originX, &originY);
    switch (event->type) {
        case GDK_MOTION_NOTIFY:
            event->motion.x = x;
            event->motion.y = y;
            break;
        case GDK_BUTTON_PRESS:
        case GDK_BUTTON_RELEASE:
            event->button.x = x;
            event->button.y = y;
            break;
        default:
            event->touch.x = x;
            event->touch.y = y;
            event->touch.x_root = originX + x;
            event->touch.y_root = originY + y;
            break;
    }
    gtk_main_do_event(event);
    gdk_event_free(event);
}

void LockedScreen::touch(GdkEventType type, double x, double y, int finger) {
    GdkEvent* event = gdk_event_new(type);
    event->touch.sequence = reinterpret_cast<GdkEventSequence*>(static_cast<intptr_t>(finger));
    event->touch.emulating_pointer = TRUE;
    send(event, x, y);
}

void LockedScreen::pointer(GdkEventType type, double x, double y) {
    GdkEvent* event = gdk_event_new(type);
    if (type != GDK_MOTION_NOTIFY) event->button.button = GDK_BUTTON_PRIMARY;
    send(event, x, y);
}

}  // namespace test
