#include "shells/desktop/tray/TrayHost.hpp"

#include <utility>

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* watcherInterface = "org.kde.StatusNotifierWatcher";

}  // namespace

TrayHost::TrayHost(GDBusConnection* bus) : bus_(shareBus(bus)), cancellable_(g_cancellable_new()) {
    const auto came = +[](GDBusConnection*, const char*, const char*, gpointer host) {
        static_cast<TrayHost*>(host)->watcherCame();
    };
    const auto went = +[](GDBusConnection*, const char*, gpointer host) {
        static_cast<TrayHost*>(host)->setPresence(Presence::Absent);
    };
    watch_ = g_bus_watch_name_on_connection(bus, watcherName, G_BUS_NAME_WATCHER_FLAGS_NONE, came,
                                            went, this, nullptr);
    const auto changed =
        +[](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*,
            gpointer host) { static_cast<TrayHost*>(host)->askForHost(); };
    signals_ = g_dbus_connection_signal_subscribe(bus, watcherName, watcherInterface, nullptr,
                                                  watcherPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
                                                  changed, this, nullptr);
}

TrayHost::~TrayHost() {
    g_dbus_connection_signal_unsubscribe(bus_.get(), signals_);
    g_bus_unwatch_name(watch_);
}

void TrayHost::watcherCame() {
    g_dbus_connection_call(
        bus_.get(), watcherName, watcherPath, watcherInterface, "RegisterStatusNotifierItem",
        g_variant_new("(s)", g_dbus_connection_get_unique_name(bus_.get())), nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, cancellable_.get(), nullptr, nullptr);
    askForHost();
}

void TrayHost::askForHost() {
    const auto answered = +[](GObject* bus, GAsyncResult* result, gpointer host) {
        GError* error = nullptr;
        const BusValue answer(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
        const BusError owned(error);
        if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) != FALSE) return;
        gboolean isThere = FALSE;
        if (answer) {
            GVariant* value = nullptr;
            g_variant_get(answer.get(), "(v)", &value);
            const BusValue kept(value);
            if (g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) != FALSE)
                isThere = g_variant_get_boolean(value);
        }
        static_cast<TrayHost*>(host)->setPresence(isThere != FALSE ? Presence::Present
                                                                   : Presence::Absent);
    };
    g_dbus_connection_call(
        bus_.get(), watcherName, watcherPath, "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", watcherInterface, "IsStatusNotifierHostRegistered"),
        G_VARIANT_TYPE("(v)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, cancellable_.get(), answered,
        this);
}

void TrayHost::setPresence(Presence presence) {
    if (std::exchange(presence_, presence) == presence) return;
    if (const auto handler = presenceHandler_) handler();
}
