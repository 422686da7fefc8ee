#pragma once

#include "shells/common/CommonOptions.hpp"
#include "shells/desktop/LayerPlace.hpp"
#include "shells/panel/OpenWidgets.hpp"

/// What the user of the desktop program chose.
struct DesktopOptions {
    shell::CommonOptions common;
    bool simulate = false;  ///< A device without sound instead of the sound server.
    HostKind host = HostKind::Current;
    std::optional<std::string> paint;  ///< The picture to write instead of opening a window.
    bool background = false;           ///< Begin hidden.
    bool service = false;              ///< The session's bus has started it, and calls it next.
    bool quit = false;                 ///< End the one that runs, and nothing else.
    bool newInstance = false;          ///< Beside the one that runs, if any.
    DrawerAnchor anchor;

    /// Whether this start is a matter of its own, and not of the session's one mixer.
    bool standsAlone() const { return newInstance || simulate || paint; }
};

/// The program's options; they write into `target`, which must outlive them.
std::vector<shell::Option> desktopOptions(DesktopOptions& target);
