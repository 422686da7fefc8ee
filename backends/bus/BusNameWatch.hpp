#pragma once

#include "backends/bus/BusSignal.hpp"

#include <functional>

/// Hears that somebody takes a name on the bus, or gives it up. Who has it already is not told: to
/// call it is to know. Main thread.
class BusNameWatch {
 public:
    /// `handler` is told whether the name has an owner now, also when one follows another. It may
    /// end this.
    BusNameWatch(GDBusConnection* bus, const char* name,
                 std::function<void(bool hasOwner)> handler);

 private:
    BusSignal changes_;
};
