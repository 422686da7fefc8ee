#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace bus {

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
/// Cancels the calls that were started with it: no answer follows.
using BusCancellable = std::unique_ptr<GCancellable, BusRelease>;

inline BusConnection shareBus(GDBusConnection* bus) {
    return BusConnection(G_DBUS_CONNECTION(g_object_ref(bus)));
}

/// The address of the session bus; nullopt if there is none, in which case the library would start
/// one.
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

/// What is called, and where.
struct BusMethod {
    const char* service;
    const char* path;
    const char* interface;
    const char* name;
};

/// Comes to the session's bus without waiting for it. `answered` gets nullptr where that fails; it
/// is not called any more once `cancellable` is cancelled. Main thread.
void openSessionBus(GCancellable* cancellable, std::function<void(BusConnection bus)> answered);

/// Calls without waiting, and without starting a service for it. `arguments` is consumed when
/// floating. `answered` gets nullptr where the call fails or answers with another type than
/// `type`; it is not called any more once `cancellable` is cancelled. Main thread.
void callOnBus(GDBusConnection* bus, const BusMethod& method, GVariant* arguments,
               const GVariantType* type, GCancellable* cancellable,
               std::function<void(GVariant* answer)> answered);

/// Hears one kind of signal on the bus for as long as it lives:
///
///     BusSignal changes(bus, {.sender = name, .member = "PropertiesChanged"},
///                       [this](GVariant* arguments) { changed(arguments); });
///
/// Main thread.
class BusSignal {
 public:
    /// What is listened to; nullptr for any.
    struct Source {
        const char* sender = nullptr;
        const char* path = nullptr;
        const char* interface = nullptr;
        const char* member = nullptr;
        const char* firstArgument = nullptr;
    };
    /// It may destroy this object.
    using Handler = std::function<void(GVariant* arguments)>;

    BusSignal(GDBusConnection* bus, const Source& source, Handler handler);
    ~BusSignal();
    BusSignal(const BusSignal&) = delete;
    BusSignal& operator=(const BusSignal&) = delete;

 private:
    BusConnection bus_;
    Handler handler_;
    guint subscription_ = 0;
};

/// Watches whether a name on the bus has an owner. An existing owner is not reported: call it to
/// find out. Main thread.
class BusNameWatch {
 public:
    /// `handler` is told whether the name has an owner by then, also when one owner follows
    /// another. It may destroy this object.
    BusNameWatch(GDBusConnection* bus, const char* name,
                 std::function<void(bool hasOwner)> handler);

 private:
    BusSignal changes_;
};

}  // namespace bus
