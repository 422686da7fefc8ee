#pragma once

#include "backends/bus/Bus.hpp"

#include <functional>

namespace desktop {

/// The session's tray service: whether it exists, and whether a host shows its items. Main thread.
class TrayHost {
 public:
    enum class Presence { Unknown, Absent, Present };
    struct Handlers {
        /// The tray has appeared: register the item with it.
        std::function<void()> came;
        std::function<void()> presenceChanged;  ///< May end this.
    };

    /// Starts watching for the tray.
    TrayHost(GDBusConnection* bus, Handlers handlers);

    /// Whether a host shows the item.
    Presence presence() const { return presence_; }

 private:
    void ownerChanged(bool hasOwner);
    void askForHost();
    void hostAnswered(bool isThere);
    void setPresence(Presence presence);

    bus::BusConnection bus_;
    bus::BusCancellable cancellable_;
    Handlers handlers_;
    Presence presence_ = Presence::Unknown;
    bool isRegistered_ = false;
    bus::BusNameWatch owner_;
    bus::BusSignal changes_;
};

}  // namespace desktop
