#pragma once

#include "shells/panel/PanelWidget.hpp"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace shell {

/// The kinds of host that a widget can be shown under.
enum class HostKind { Current, Legacy };

/// What a shell shows, and its complaints about it.
struct OpenedWidgets {
    std::unique_ptr<PanelWidget> widget;  ///< All of them as one widget; never nullptr.
    std::vector<std::string> complaints;  ///< One for each bundle that could not be loaded.
    bool anyLoaded = false;
};

/// Loads the bundles in those folders, shown from top to bottom. One that cannot be loaded is
/// replaced by a line that names it. `parentWidth`, in points, is the width of the parent of the
/// current host's widgets. Main thread.
OpenedWidgets openWidgets(std::span<const std::string> bundlePaths, HostKind kind,
                          CGFloat parentWidth);

}  // namespace shell
