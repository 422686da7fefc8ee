#pragma once

#include "backends/bus/Bus.hpp"

#include <functional>

/// Hears one kind of signal for as long as this lives. Main thread.
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
    /// May end this.
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
