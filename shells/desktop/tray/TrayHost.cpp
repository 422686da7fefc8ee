#include "shells/desktop/tray/TrayHost.hpp"

#include "backends/bus/Bus.hpp"

#include <utility>

namespace desktop {
namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* watcherInterface = "org.kde.StatusNotifierWatcher";

}  // namespace

TrayHost::TrayHost(GDBusConnection* bus, Handlers handlers)
    : bus_(bus::shareBus(bus)),
      cancellable_(g_cancellable_new()),
      handlers_(std::move(handlers)),
      owner_(bus, watcherName, [this](bool hasOwner) { ownerChanged(hasOwner); }),
      changes_(bus, {.sender = watcherName, .path = watcherPath, .interface = watcherInterface},
               [this](GVariant* /*arguments*/) { askForHost(); }) {
    askForHost();
}

void TrayHost::ownerChanged(bool hasOwner) {
    isRegistered_ = false;
    if (hasOwner)
        askForHost();
    else
        setPresence(Presence::Absent);
}

void TrayHost::askForHost() {
    const auto answered = [this](GVariant* answer) {
        if (!answer) return setPresence(Presence::Absent);
        const bus::BusValue boxed(g_variant_get_child_value(answer, 0));
        const bus::BusValue value(g_variant_get_variant(boxed.get()));
        hostAnswered(g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) != FALSE &&
                     g_variant_get_boolean(value.get()) != FALSE);
    };
    bus::callOnBus(bus_.get(), {watcherName, watcherPath, "org.freedesktop.DBus.Properties", "Get"},
                   g_variant_new("(ss)", watcherInterface, "IsStatusNotifierHostRegistered"),
                   G_VARIANT_TYPE("(v)"), cancellable_.get(), answered);
}

void TrayHost::hostAnswered(bool isThere) {
    if (!std::exchange(isRegistered_, true)) {
        handlers_.came();
        g_dbus_connection_call(
            bus_.get(), watcherName, watcherPath, watcherInterface, "RegisterStatusNotifierItem",
            g_variant_new("(s)", g_dbus_connection_get_unique_name(bus_.get())), nullptr,
            G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
    }
    setPresence(isThere ? Presence::Present : Presence::Absent);
}

void TrayHost::setPresence(Presence presence) {
    if (std::exchange(presence_, presence) == presence) return;
    const auto changed = handlers_.presenceChanged;  // A copy: it may end this.
    changed();
}

}  // namespace desktop
