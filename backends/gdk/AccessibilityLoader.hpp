#pragma once

#include "backends/bus/Bus.hpp"
#include "backends/gdk/AccessibilityBridge.hpp"

#include <memory>
#include <optional>
#include <string>

namespace windowing {

/// Watches whether the session wants accessibility (a screen reader runs, or the desktop's switch
/// is on) without starting a service or waiting for one, and loads the bridge when it does, now or
/// later. NO_AT_BRIDGE=1 prevents that. Main thread.
class AccessibilityLoader {
 public:
    /// `modulePath` is the module's file. Begins to watch at once; a session bus is not launched
    /// for it.
    AccessibilityLoader(std::string modulePath, AccessibleWindow window);
    ~AccessibilityLoader();
    AccessibilityLoader(const AccessibilityLoader&) = delete;
    AccessibilityLoader& operator=(const AccessibilityLoader&) = delete;

    bool isLoaded() const { return bridge_ != nullptr; }
    /// Forwarded to the bridge while it is loaded.
    void contentMayHaveChanged();
    void activityChanged(WindowActivity activity);
    bool takesKey(const GdkEventKey& event) { return bridge_ && bridge_->takesKey(event); }

 private:
    /// Hears the switch, and a service that comes to hold it.
    struct Watch {
        Watch(bus::BusConnection connection, AccessibilityLoader& loader);

        bus::BusConnection bus;
        bus::BusNameWatch owner;
        bus::BusSignal changes;
    };

    void watch(bus::BusConnection bus);
    void askIfWanted();
    void load();

    std::string modulePath_;
    AccessibleWindow window_;
    WindowActivity activity_ = WindowActivity::Inactive;
    bus::BusCancellable asking_;
    std::optional<Watch> watch_;
    std::unique_ptr<AccessibilityBridge> bridge_;
};

}  // namespace windowing
