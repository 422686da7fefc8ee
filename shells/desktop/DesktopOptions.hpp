#pragma once

#include "shells/common/Options.hpp"
#include "shells/desktop/LayerPlace.hpp"
#include "shells/panel/OpenWidgets.hpp"

namespace desktop {

/// The choices on the desktop program's command line.
struct DesktopOptions {
    shell::CommonOptions common;
    bool simulate = false;  ///< Use the simulated device instead of the sound server.
    shell::HostKind host = shell::HostKind::Current;
    std::optional<std::string> paint;  ///< The picture to write instead of opening a window.
    bool background = false;           ///< Start hidden.
    bool service = false;              ///< Started by the session bus, which calls it next.
    bool quit = false;                 ///< Only end the running mixer.
    bool settings = false;             ///< Only open the settings.
    bool newInstance = false;          ///< Run beside another mixer, if there is one.
    DrawerAnchor anchor;

    /// Whether this start is independent of the session's one mixer.
    bool standsAlone() const { return newInstance || simulate || paint; }
};

/// The program's options; they write into `target`, which must outlive them.
std::vector<shell::Option> desktopOptions(DesktopOptions& target);

}  // namespace desktop
