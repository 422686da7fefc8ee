#include "backends/bus/BusCall.hpp"

#include <utility>

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
