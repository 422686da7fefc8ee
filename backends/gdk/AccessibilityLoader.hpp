#pragma once

#include "backends/bus/BusNameWatch.hpp"
#include "backends/bus/BusSignal.hpp"
#include "backends/gdk/AccessibilityBridge.hpp"

#include <memory>
#include <optional>
#include <string>

/// Watches whether the session wants accessibility (a screen reader is on, or the desktop's switch
/// is), without starting a service or waiting for one, and loads the bridge when it does: now or at
/// any later time. The usual NO_AT_BRIDGE=1 keeps it away. Main thread.
class AccessibilityLoader {
 public:
    /// `modulePath` is the module's file. Begins to watch at once; a session bus is not launched
    /// for it.
    AccessibilityLoader(std::string modulePath, AccessibleWindow window);
    ~AccessibilityLoader();
    AccessibilityLoader(const AccessibilityLoader&) = delete;
    AccessibilityLoader& operator=(const AccessibilityLoader&) = delete;

    bool isLoaded() const { return bridge_ != nullptr; }
    /// These are passed on when there is somebody to tell.
    void contentMayHaveChanged();
    void activityChanged(WindowActivity activity);
    bool takesKey(const GdkEventKey& event) { return bridge_ && bridge_->takesKey(event); }

 private:
    /// Hears the switch, and a service that comes to hold it.
    struct Watch {
        Watch(BusConnection connection, AccessibilityLoader& loader);

        BusConnection bus;
        BusNameWatch owner;
        BusSignal changes;
    };

    void watch(BusConnection bus);
    void askIfWanted();
    void load();

    std::string modulePath_;
    AccessibleWindow window_;
    WindowActivity activity_ = WindowActivity::Inactive;
    BusCancellable asking_;
    std::optional<Watch> watch_;
    std::unique_ptr<AccessibilityBridge> bridge_;
};
