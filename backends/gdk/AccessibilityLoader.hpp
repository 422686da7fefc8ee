#pragma once

#include "backends/gdk/AccessibilityBridge.hpp"

#include <gio/gio.h>

#include <memory>
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
    struct Unref {
        void operator()(gpointer object) const { g_object_unref(object); }
    };

    void watch(GDBusProxy* status);
    void loadIfWanted();
    void load();

    std::string modulePath_;
    AccessibleWindow window_;
    WindowActivity activity_ = WindowActivity::Inactive;
    std::unique_ptr<GCancellable, Unref> asking_;
    std::unique_ptr<GDBusProxy, Unref> status_;
    std::unique_ptr<AccessibilityBridge> bridge_;
};
