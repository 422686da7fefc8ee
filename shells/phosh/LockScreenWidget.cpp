#include "backends/gdk/DesktopSettings.hpp"
#include "platform/foundation/NSLog.hpp"
#include "shells/phosh/LockScreenPage.hpp"

#include <gio/gio.h>
#include <gtk/gtk.h>

#include <exception>
#include <memory>

namespace phosh {
namespace {

// Points. More than any page has, so that the widget gets all available space.
constexpr int tallest = 4096;
constexpr int usualWidth = 360;

/// The GTK widget that the lock screen creates from this plugin at each lock: a LockScreenPage in a
/// window of its own. It requests more height than any page has, and none of its rows before it is
/// seen.
struct LockScreenWidget {
    GtkWidget parent;
    LockScreenPage* page;  ///< Owned; nullptr once the widget is destroyed.
};

GtkWidgetClass* parentClass = nullptr;

LockScreenWidget* self(GtkWidget* widget) {
    return reinterpret_cast<LockScreenWidget*>(widget);
}

/// Calls a function of the page, if it still exists. Its exceptions are caught and logged, so that
/// the lock screen continues.
template <class Call>
void withPage(GtkWidget* widget, const Call& call) {
    LockScreenPage* page = self(widget)->page;
    if (!page) return;
    try {
        call(*page);
    } catch (const std::exception& error) {
        NSLog(std::string("tarnwick: the lock screen's page failed: ") + error.what());
    }
}

void initialise(GTypeInstance* instance, gpointer /*type*/) {
    auto* widget = reinterpret_cast<GtkWidget*>(instance);
    gtk_widget_set_has_window(widget, TRUE);
    gtk_widget_set_hexpand(widget, TRUE);
    gtk_widget_set_vexpand(widget, TRUE);
    try {
        self(widget)->page = std::make_unique<LockScreenPage>().release();
    } catch (const std::exception& error) {
        NSLog(std::string("tarnwick: no page for the lock screen: ") + error.what());
    }
}

void destroy(GtkWidget* widget) {
    parentClass->destroy(widget);
    const std::unique_ptr<LockScreenPage> page(std::exchange(self(widget)->page, nullptr));
}

GdkWindow* newWindow(GtkWidget* widget) {
    GtkAllocation place;
    gtk_widget_get_allocation(widget, &place);
    GdkWindowAttr attributes = {};
    attributes.x = place.x;
    attributes.y = place.y;
    attributes.width = place.width;
    attributes.height = place.height;
    attributes.wclass = GDK_INPUT_OUTPUT;
    attributes.window_type = GDK_WINDOW_CHILD;
    attributes.visual = gtk_widget_get_visual(widget);
    attributes.event_mask = gtk_widget_get_events(widget) | LockScreenPage::windowEvents;
    return gdk_window_new(gtk_widget_get_parent_window(widget), &attributes,
                          GDK_WA_X | GDK_WA_Y | GDK_WA_VISUAL);
}

void realize(GtkWidget* widget) {
    gtk_widget_set_realized(widget, TRUE);
    GdkWindow* window = newWindow(widget);
    gtk_widget_set_window(widget, window);
    gtk_widget_register_window(widget, window);
    windowing::applyDesktopSettings(gtk_widget_get_screen(widget));
    withPage(widget, [window](LockScreenPage& page) { page.enterWindow(window); });
}

void unrealize(GtkWidget* widget) {
    withPage(widget, [](LockScreenPage& page) { page.leaveWindow(); });
    parentClass->unrealize(widget);
}

void unmap(GtkWidget* widget) {
    withPage(widget, [](LockScreenPage& page) { page.leaveSight(); });
    parentClass->unmap(widget);
}

void allocate(GtkWidget* widget, GtkAllocation* place) {
    parentClass->size_allocate(widget, place);
    const CGSize size = {static_cast<CGFloat>(place->width), static_cast<CGFloat>(place->height)};
    const auto textScale =
        static_cast<CGFloat>(windowing::desktopTextScale(gtk_widget_get_screen(widget)));
    withPage(widget, [&](LockScreenPage& page) { page.setSize(size, textScale); });
}

void preferredWidth(GtkWidget* /*widget*/, gint* minimum, gint* natural) {
    *minimum = 1;
    *natural = usualWidth;
}

void preferredHeight(GtkWidget* /*widget*/, gint* minimum, gint* natural) {
    *minimum = 1;
    *natural = tallest;
}

void preferredHeightForWidth(GtkWidget* widget, gint /*width*/, gint* minimum, gint* natural) {
    preferredHeight(widget, minimum, natural);
}

gboolean draw(GtkWidget* widget, cairo_t* context) {
    withPage(widget, [context](LockScreenPage& page) { page.paint(context); });
    return FALSE;
}

gboolean handleEvent(GtkWidget* widget, GdkEvent* event) {
    bool used = false;
    withPage(widget, [&](LockScreenPage& page) { used = page.handleEvent(*event); });
    return used ? TRUE : FALSE;
}

/// GTK would turn unused touches into pointer presses.
gboolean passTouchOn(GtkWidget* /*widget*/, GdkEventTouch* /*event*/) {
    return FALSE;
}

void changeStyle(GtkWidget* widget) {
    parentClass->style_updated(widget);
    if (gtk_widget_get_realized(widget))
        windowing::applyDesktopSettings(gtk_widget_get_screen(widget));
    gtk_widget_queue_resize(widget);  // The text may be of another size.
}

void initialiseClass(gpointer type, gpointer /*data*/) {
    parentClass = static_cast<GtkWidgetClass*>(g_type_class_peek_parent(type));
    auto* widgets = static_cast<GtkWidgetClass*>(type);
    widgets->destroy = destroy;
    widgets->realize = realize;
    widgets->unrealize = unrealize;
    widgets->unmap = unmap;
    widgets->size_allocate = allocate;
    widgets->get_preferred_width = preferredWidth;
    widgets->get_preferred_height = preferredHeight;
    widgets->get_preferred_height_for_width = preferredHeightForWidth;
    widgets->draw = draw;
    widgets->event = handleEvent;
    widgets->touch_event = passTouchOn;
    widgets->style_updated = changeStyle;
}

/// Registers the widget's type for the module; a second call returns the same type.
GType lockScreenWidgetType(GTypeModule* module) {
    GTypeInfo info = {};
    info.class_size = sizeof(GtkWidgetClass);
    info.class_init = initialiseClass;
    info.instance_size = sizeof(LockScreenWidget);
    info.instance_init = initialise;
    return g_type_module_register_type(module, GTK_TYPE_WIDGET, "TarnwickLockScreen", &info,
                                       static_cast<GTypeFlags>(0));
}

constexpr const char* extensionPoint = "phosh-lockscreen-widget";
constexpr const char* pluginName = "tarnwick";  // As in the shell's list of plugins to show.
constexpr gint priority = 10;                   // Any number: only one plugin has the name.

}  // namespace

}  // namespace phosh

// The plugin's interface for the lock screen: a GIO module that provides a widget for the extension
// point. It stays loaded, since the shell creates a new widget at each lock.
extern "C" {

G_MODULE_EXPORT void g_io_module_load(GIOModule* module) {
    auto* owner = reinterpret_cast<GTypeModule*>(module);
    g_type_module_use(owner);
    g_io_extension_point_implement(phosh::extensionPoint, phosh::lockScreenWidgetType(owner),
                                   phosh::pluginName, phosh::priority);
}

G_MODULE_EXPORT void g_io_module_unload(GIOModule* /*module*/) {}

/// Lists the extension points for GIO's cache of a folder, which avoids loading the module.
G_MODULE_EXPORT char** g_io_phosh_plugin_tarnwick_query() {
    const char* const points[] = {phosh::extensionPoint, nullptr};
    return g_strdupv(const_cast<char**>(static_cast<const char* const*>(points)));
}
}
