#pragma once

#include "backends/bus/BusNameWatch.hpp"
#include "backends/bus/BusSignal.hpp"

#include <functional>

/// The session's tray as a service: whether there is one, and whether somebody shows what is in it.
/// Main thread.
class TrayHost {
 public:
    enum class Presence { Unknown, Absent, Present };
    struct Handlers {
        /// The tray has come, or come back: what it shall show must be on the bus afterwards.
        std::function<void()> came;
        std::function<void()> presenceChanged;  ///< May end this.
    };

    /// Begins to look.
    TrayHost(GDBusConnection* bus, Handlers handlers);

    /// Whether somebody shows the item.
    Presence presence() const { return presence_; }

 private:
    void ownerChanged(bool hasOwner);
    void askForHost();
    void hostAnswered(bool isThere);
    void setPresence(Presence presence);

    BusConnection bus_;
    BusCancellable cancellable_;
    Handlers handlers_;
    Presence presence_ = Presence::Unknown;
    bool isRegistered_ = false;
    BusNameWatch owner_;
    BusSignal changes_;
};
