// A plugin of the lock screen: an empty page, for there to be more than one; and inside the shell's
// process it does what the shell itself does once the right code was typed in, which needs a user
// with a password.
#include <gio/gio.h>
#include <glib-unix.h>
#include <gtk/gtk.h>

#include <csignal>
#include <string_view>

namespace {

gboolean unlock(gpointer /*nothing*/) {
    GList* windows = gtk_window_list_toplevels();
    for (GList* each = windows; each; each = each->next) {
        if (std::string_view(G_OBJECT_TYPE_NAME(each->data)) != "PhoshLockscreen") continue;
        g_signal_emit_by_name(each->data, "lockscreen-unlock");
        break;
    }
    g_list_free(windows);
    return G_SOURCE_CONTINUE;
}

}  // namespace

extern "C" {
G_MODULE_EXPORT void g_io_module_load(GIOModule* module) {
    g_type_module_use(reinterpret_cast<GTypeModule*>(module));
    g_io_extension_point_implement("phosh-lockscreen-widget", GTK_TYPE_DRAWING_AREA, "empty", 10);
    g_unix_signal_add(SIGUSR2, unlock, nullptr);
}
G_MODULE_EXPORT void g_io_module_unload(GIOModule* /*module*/) {}
}
