#pragma once

#include "shells/desktop/Bus.hpp"

#include <functional>

/// Hands our item to the session's tray, and again whenever a tray comes back. Main thread.
class TrayHost {
 public:
    enum class Presence { Unknown, Absent, Present };

    /// Begins to look; the item must be on the bus already.
    explicit TrayHost(GDBusConnection* bus);
    ~TrayHost();
    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;

    /// Whether somebody shows the item.
    Presence presence() const { return presence_; }
    void setPresenceHandler(std::function<void()> handler) {
        presenceHandler_ = std::move(handler);
    }

 private:
    void watcherCame();
    void askForHost();
    void setPresence(Presence presence);

    BusConnection bus_;
    BusCancellable cancellable_;
    guint watch_ = 0;
    guint signals_ = 0;
    Presence presence_ = Presence::Unknown;
    std::function<void()> presenceHandler_;
};
