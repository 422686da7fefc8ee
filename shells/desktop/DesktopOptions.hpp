#pragma once

#include "shells/common/CommonOptions.hpp"
#include "shells/panel/OpenWidgets.hpp"

/// What the user of the desktop program chose.
struct DesktopOptions {
    shell::CommonOptions common;
    bool simulate = false;  ///< A device without sound instead of the sound server.
    HostKind host = HostKind::Current;
    std::optional<std::string> paint;  ///< The picture to write instead of opening a window.
};

/// The program's options; they write into `target`, which must outlive them.
std::vector<shell::Option> desktopOptions(DesktopOptions& target);
