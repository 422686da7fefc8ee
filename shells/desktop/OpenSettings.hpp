#pragma once

#include "shells/common/Options.hpp"

#include <gdk/gdk.h>

namespace desktop {

/// Opens the settings program, for the preferences folder and the machine model that were chosen;
/// where it is not installed, the folder of the mixer's two files in the desktop's file manager,
/// created if it does not exist. Starts a program and does not wait for its window. Where nothing
/// could be started, complains of it and returns the reason, in words for users. `display` lets the
/// new window take the focus; nullptr for none. Main thread.
shell::Problem openSettings(const shell::CommonOptions& options, GdkDisplay* display);

}  // namespace desktop
