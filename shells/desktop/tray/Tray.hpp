#pragma once

#include "shells/desktop/tray/MediaVolume.hpp"
#include "shells/desktop/tray/TrayHost.hpp"
#include "shells/desktop/tray/TrayItem.hpp"
#include "shells/desktop/tray/TrayMenu.hpp"

#include <functional>
#include <optional>

namespace desktop {

/// The mixer's icon in the session's tray: shows the media volume, changes it by the wheel, and
/// opens the drawer. Main thread.
class Tray {
 public:
    /// Each of them may destroy the tray.
    struct Handlers {
        std::function<void(int x, int y)> toggle;  ///< Screen points, near the icon.
        std::function<void()> menuOpened;          ///< The pointer may be on the icon.
        std::function<void()> show;                ///< By the menu.
        std::function<void()> settings;            ///< By the menu, as the next one.
        std::function<void()> quit;
        std::function<void()> presenceChanged;
    };

    Tray(GDBusConnection* bus, const Handlers& handlers);

    TrayHost::Presence presence() const { return host_.presence(); }
    /// Reads the volume and its name again, when no notification announced a change.
    void refresh();

 private:
    /// What the tray shows, and the volume behind it.
    struct Icon {
        Icon(GDBusConnection* bus, const Handlers& handlers);

        MediaVolume volume;
        TrayMenu menu;
        TrayItem item;
    };

    std::optional<Icon> icon_;  ///< Set once there is a tray.
    TrayHost host_;
};

}  // namespace desktop
