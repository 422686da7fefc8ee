#pragma once

#include "backends/bus/Bus.hpp"

#include <functional>

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
