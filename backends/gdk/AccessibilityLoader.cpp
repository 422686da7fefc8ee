#include "backends/gdk/AccessibilityLoader.hpp"

#include "platform/foundation/NSLog.hpp"

#include <dlfcn.h>

#include <string_view>

namespace {

/// GIO would launch a bus of its own where the session has none.
bool hasSessionBus() {
    if (g_getenv("DBUS_SESSION_BUS_ADDRESS")) return true;
    const std::string socket = std::string(g_get_user_runtime_dir()) + "/bus";
    return g_file_test(socket.c_str(), G_FILE_TEST_EXISTS) != FALSE;
}

bool isKeptAway() {
    const char* value = g_getenv("NO_AT_BRIDGE");
    return value && std::string_view(value) == "1";
}

bool isTrue(GDBusProxy* status, const char* property) {
    GVariant* value = g_dbus_proxy_get_cached_property(status, property);
    if (value == nullptr) return false;
    const bool result = g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) != FALSE &&
                        g_variant_get_boolean(value) != FALSE;
    g_variant_unref(value);
    return result;
}

}  // namespace

AccessibilityLoader::AccessibilityLoader(std::string modulePath, AccessibleWindow window)
    : modulePath_(std::move(modulePath)), window_(std::move(window)) {
    if (isKeptAway() || !hasSessionBus()) return;
    asking_.reset(g_cancellable_new());
    const auto answered = +[](GObject*, GAsyncResult* result, gpointer loader) {
        GError* error = nullptr;
        GDBusProxy* status = g_dbus_proxy_new_for_bus_finish(result, &error);
        // Cancelled: the loader is gone. Any other failure means that nobody listens.
        if (error) g_error_free(error);
        if (status) static_cast<AccessibilityLoader*>(loader)->watch(status);
    };
    g_dbus_proxy_new_for_bus(G_BUS_TYPE_SESSION, G_DBUS_PROXY_FLAGS_DO_NOT_AUTO_START, nullptr,
                             "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Status", asking_.get(),
                             answered, this);
}

AccessibilityLoader::~AccessibilityLoader() {
    if (asking_) g_cancellable_cancel(asking_.get());
    if (status_) g_signal_handlers_disconnect_by_data(status_.get(), this);
}

void AccessibilityLoader::watch(GDBusProxy* status) {
    status_.reset(status);
    const auto changed =
        +[](gpointer loader) { static_cast<AccessibilityLoader*>(loader)->loadIfWanted(); };
    for (const char* signal : {"g-properties-changed", "notify::g-name-owner"})
        g_signal_connect_swapped(status, signal, G_CALLBACK(changed), this);
    loadIfWanted();
}

void AccessibilityLoader::loadIfWanted() {
    if (bridge_) return;
    if (isTrue(status_.get(), "IsEnabled") || isTrue(status_.get(), "ScreenReaderEnabled")) load();
}

void AccessibilityLoader::load() {
    // Asking once is enough: a module that cannot be loaded now cannot be loaded later.
    g_signal_handlers_disconnect_by_data(status_.get(), this);
    void* module = dlopen(modulePath_.c_str(), RTLD_NOW | RTLD_LOCAL);
    const auto open =
        module ? reinterpret_cast<AccessibilityEntry>(dlsym(module, accessibilityEntryName))
               : nullptr;
    if (open == nullptr) {
        NSLog(std::string("tarnwick: no accessibility: ") + dlerror());
        return;
    }
    bridge_.reset(open(window_));
    activityChanged(activity_);
}

void AccessibilityLoader::contentMayHaveChanged() {
    if (bridge_) bridge_->contentMayHaveChanged();
}

void AccessibilityLoader::activityChanged(WindowActivity activity) {
    activity_ = activity;
    if (bridge_) bridge_->activityChanged(activity);
}
