#include "backends/bus/BusNameWatch.hpp"

#include <utility>

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
