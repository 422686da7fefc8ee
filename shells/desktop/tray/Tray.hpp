#pragma once

#include "shells/desktop/tray/MediaVolume.hpp"
#include "shells/desktop/tray/TrayHost.hpp"
#include "shells/desktop/tray/TrayItem.hpp"
#include "shells/desktop/tray/TrayMenu.hpp"

#include <functional>
#include <optional>

/// The mixer's icon in the session's tray: tells the media volume, changes it by the wheel, and
/// calls the drawer. Main thread.
class Tray {
 public:
    /// May end the tray.
    struct Handlers {
        std::function<void(int x, int y)> toggle;  ///< Points of the screen, near the icon.
        std::function<void()> menuOpened;          ///< The pointer may be on the icon.
        std::function<void()> show;                ///< By the menu.
        std::function<void()> quit;
        std::function<void()> presenceChanged;
    };

    Tray(GDBusConnection* bus, const Handlers& handlers);

    TrayHost::Presence presence() const { return host_.presence(); }
    /// Looks at the volume and at its name again, where no notification told of it.
    void refresh();

 private:
    /// What the tray gets to see.
    struct Icon {
        Icon(GDBusConnection* bus, const Handlers& handlers);

        MediaVolume volume;
        TrayMenu menu;
        TrayItem item;
    };

    std::optional<Icon> icon_;  ///< From when there is a tray on.
    TrayHost host_;
};
