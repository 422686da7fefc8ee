#include "shells/phosh/LockScreenWidget.hpp"

#include <gio/gio.h>

// What the lock screen asks of a plugin: one of the process's GIO modules that brings a widget for
// this place. It stays loaded, since the shell makes a new widget at each lock.

namespace {

constexpr const char* extensionPoint = "phosh-lockscreen-widget";
constexpr const char* pluginName = "tarnwick";  // As in the shell's list of plugins to show.
constexpr gint priority = 10;                   // Any: there is one of the name.

}  // namespace

extern "C" {

G_MODULE_EXPORT void g_io_module_load(GIOModule* module) {
    auto* owner = reinterpret_cast<GTypeModule*>(module);
    g_type_module_use(owner);
    g_io_extension_point_implement(extensionPoint, lockScreenWidgetType(owner), pluginName,
                                   priority);
}

G_MODULE_EXPORT void g_io_module_unload(GIOModule* /*module*/) {}

/// For the cache of a folder of modules: what the module would bring, told without loading it.
G_MODULE_EXPORT char** g_io_phosh_plugin_tarnwick_query() {
    const char* const points[] = {extensionPoint, nullptr};
    return g_strdupv(const_cast<char**>(static_cast<const char* const*>(points)));
}
}
