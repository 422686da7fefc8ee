#include "backends/bus/BusSignal.hpp"

#include <utility>

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
