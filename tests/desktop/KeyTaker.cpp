#include "tests/desktop/KeyTaker.hpp"

#include <iostream>

namespace test {
namespace {

constexpr const char* listenerPath = "/listener";
constexpr const char* listenerInterface =
    "<node><interface name='org.a11y.atspi.DeviceEventListener'>"
    "<method name='NotifyEvent'><arg type='(uiuuisb)' direction='in'/>"
    "<arg type='b' direction='out'/></method></interface></node>";

constexpr guint32 presses = 1;  // The events that are wanted, as bits.

}  // namespace

KeyTaker::KeyTaker(std::string busAddress, std::string takenKey)
    : busAddress_(std::move(busAddress)),
      takenKey_(std::move(takenKey)),
      context_(g_main_context_new()),
      thread_([this] { work(); }) {}

KeyTaker::~KeyTaker() {
    ended_ = true;
    g_main_context_wakeup(context_);
    thread_.join();
    g_main_context_unref(context_);
}

void KeyTaker::work() {
    g_main_context_push_thread_default(context_);
    GDBusConnection* bus = g_dbus_connection_new_for_address_sync(
        busAddress_.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    if (bus) listen(bus);
    while (!ended_)
        g_main_context_iteration(context_, TRUE);
    if (bus) g_dbus_connection_close_sync(bus, nullptr, nullptr);
    g_clear_object(&bus);
    g_main_context_pop_thread_default(context_);
}

void KeyTaker::listen(GDBusConnection* bus) {
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(listenerInterface, nullptr);
    static const GDBusInterfaceVTable table = {answer, nullptr, nullptr, {}};
    g_dbus_connection_register_object(bus, listenerPath, node->interfaces[0], &table, this, nullptr,
                                      nullptr);
    g_dbus_node_info_unref(node);
    const auto mode = g_variant_new("(bbb)", TRUE, TRUE, FALSE);  // Asked first, and waited for.
    GError* error = nullptr;
    GVariant* reply = g_dbus_connection_call_sync(
        bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/registry/deviceeventcontroller",
        "org.a11y.atspi.DeviceEventController", "RegisterKeystrokeListener",
        g_variant_new("(oa(iisi)uu@(bbb))", listenerPath, nullptr, 0U, presses, mode), nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error);
    if (error) std::cerr << "The registry does not let keys be heard: " << error->message << '\n';
    g_clear_error(&error);
    listening_ = reply != nullptr;
    g_main_context_wakeup(nullptr);  // For who waits for it.
    if (reply) g_variant_unref(reply);
}

void KeyTaker::answer(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                      const char* /*interface*/, const char* /*method*/, GVariant* arguments,
                      GDBusMethodInvocation* invocation, gpointer taker) {
    auto& self = *static_cast<KeyTaker*>(taker);
    const char* text = nullptr;
    g_variant_get(arguments, "((uiuui&sb))", nullptr, nullptr, nullptr, nullptr, nullptr, &text,
                  nullptr);
    ++self.heard_;
    const bool take = self.takenKey_ == text;
    if (take) ++self.taken_;
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(b)", take ? TRUE : FALSE));
}

}  // namespace test
