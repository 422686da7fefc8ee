#include "backends/bus/Bus.hpp"

#include <utility>

namespace bus {

std::optional<std::string> sessionBusAddress() {
    const char* set = g_getenv("DBUS_SESSION_BUS_ADDRESS");
    if (set != nullptr && *set != '\0') return set;
    const char* folder = g_getenv("XDG_RUNTIME_DIR");
    if (folder == nullptr) return std::nullopt;
    const std::string socket = std::string(folder) + "/bus";
    if (!g_file_test(socket.c_str(), G_FILE_TEST_EXISTS)) return std::nullopt;
    return "unix:path=" + socket;
}

BusObject::BusObject(GDBusConnection* bus, const char* path, const char* description,
                     const GDBusInterfaceVTable& table, gpointer data)
    : bus_(shareBus(bus)),
      path_(path),
      description_(g_dbus_node_info_new_for_xml(description, nullptr)) {
    GDBusInterfaceInfo* interface = description_->interfaces[0];
    interface_ = interface->name;
    registration_ = g_dbus_connection_register_object(bus_.get(), path_, interface, &table, data,
                                                      nullptr, nullptr);
}

BusObject::~BusObject() {
    if (registration_ != 0) g_dbus_connection_unregister_object(bus_.get(), registration_);
}

void BusObject::emit(const char* signal, GVariant* arguments) const {
    g_dbus_connection_emit_signal(bus_.get(), nullptr, path_, interface_, signal, arguments,
                                  nullptr);
}

namespace {

/// Takes what a call to the library was given for its end.
template <typename Handler>
std::unique_ptr<Handler> take(gpointer data) {
    return std::unique_ptr<Handler>(static_cast<Handler*>(data));
}

bool isCancelled(const GError* error) {
    return g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) != FALSE;
}

}  // namespace

void openSessionBus(GCancellable* cancellable, std::function<void(BusConnection bus)> answered) {
    using Handler = std::function<void(BusConnection)>;
    const auto ended = +[](GObject*, GAsyncResult* result, gpointer data) {
        const auto handler = take<Handler>(data);
        GError* error = nullptr;
        BusConnection bus(g_bus_get_finish(result, &error));
        const BusError owned(error);
        if (isCancelled(error)) return;
        // A session's end is told by a signal; that of its bus alone is no reason to end.
        if (bus) g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
        (*handler)(std::move(bus));
    };
    g_bus_get(G_BUS_TYPE_SESSION, cancellable, ended,
              std::make_unique<Handler>(std::move(answered)).release());
}

void callOnBus(GDBusConnection* bus, const BusMethod& method, GVariant* arguments,
               const GVariantType* type, GCancellable* cancellable,
               std::function<void(GVariant* answer)> answered) {
    using Handler = std::function<void(GVariant*)>;
    const auto ended = +[](GObject* source, GAsyncResult* result, gpointer data) {
        const auto handler = take<Handler>(data);
        GError* error = nullptr;
        const BusValue answer(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error));
        const BusError owned(error);
        if (!isCancelled(error)) (*handler)(answer.get());
    };
    g_dbus_connection_call(bus, method.service, method.path, method.interface, method.name,
                           arguments, type, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, cancellable, ended,
                           std::make_unique<Handler>(std::move(answered)).release());
}

BusSignal::BusSignal(GDBusConnection* bus, const Source& source, Handler handler)
    : bus_(shareBus(bus)), handler_(std::move(handler)) {
    const auto heard = +[](GDBusConnection*, const char*, const char*, const char*, const char*,
                           GVariant* arguments, gpointer signal) {
        const Handler copy = static_cast<const BusSignal*>(signal)->handler_;
        copy(arguments);
    };
    subscription_ = g_dbus_connection_signal_subscribe(
        bus, source.sender, source.interface, source.member, source.path, source.firstArgument,
        G_DBUS_SIGNAL_FLAGS_NONE, heard, this, nullptr);
}

BusSignal::~BusSignal() {
    g_dbus_connection_signal_unsubscribe(bus_.get(), subscription_);
}

BusNameWatch::BusNameWatch(GDBusConnection* bus, const char* name,
                           std::function<void(bool hasOwner)> handler)
    : changes_(bus,
               {.sender = "org.freedesktop.DBus",
                .path = "/org/freedesktop/DBus",
                .interface = "org.freedesktop.DBus",
                .member = "NameOwnerChanged",
                .firstArgument = name},
               [handler = std::move(handler)](GVariant* arguments) {
                   if (!g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sss)"))) return;
                   const char* owner = nullptr;
                   g_variant_get(arguments, "(&s&s&s)", nullptr, nullptr, &owner);
                   handler(*owner != '\0');
               }) {}

}  // namespace bus
