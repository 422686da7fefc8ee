#pragma once

#include <gio/gio.h>

#include <memory>
#include <optional>
#include <string>

/// Owners of what the bus library hands out.
struct BusRelease {
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
    void operator()(GDBusNodeInfo* node) const { g_dbus_node_info_unref(node); }
    void operator()(GCancellable* cancellable) const {
        g_cancellable_cancel(cancellable);
        g_object_unref(cancellable);
    }
};
using BusValue = std::unique_ptr<GVariant, BusRelease>;
using BusError = std::unique_ptr<GError, BusRelease>;
using BusConnection = std::unique_ptr<GDBusConnection, BusRelease>;
using BusDescription = std::unique_ptr<GDBusNodeInfo, BusRelease>;
/// Ends what was begun with it: no answer comes to somebody who is gone.
using BusCancellable = std::unique_ptr<GCancellable, BusRelease>;

inline BusConnection shareBus(GDBusConnection* bus) {
    return BusConnection(G_DBUS_CONNECTION(g_object_ref(bus)));
}

/// Where the session's bus is; nullopt where there is none, and the library would start one of its
/// own.
std::optional<std::string> sessionBusAddress();

/// An object of ours on the bus, for as long as this lives. Main thread.
class BusObject {
 public:
    /// `description` is the XML of one interface; `table` and `data` answer its calls.
    BusObject(GDBusConnection* bus, const char* path, const char* description,
              const GDBusInterfaceVTable& table, gpointer data);
    ~BusObject();
    BusObject(const BusObject&) = delete;
    BusObject& operator=(const BusObject&) = delete;

    /// `arguments` is consumed when floating; nullptr for none.
    void emit(const char* signal, GVariant* arguments = nullptr) const;

 private:
    BusConnection bus_;
    const char* path_;
    const char* interface_ = nullptr;
    BusDescription description_;
    guint registration_ = 0;
};
