#include "backends/bus/Bus.hpp"

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
