#pragma once

#include "shells/panel/PanelWidget.hpp"

#include <memory>
#include <span>
#include <string>
#include <vector>

/// The kinds of host that a widget can be shown under.
enum class HostKind { Current, Legacy };

/// What a shell shows, and what it has to say of it.
struct OpenedWidgets {
    std::unique_ptr<PanelWidget> widget;  ///< All of them as one; never nullptr.
    std::vector<std::string> complaints;  ///< One for each bundle that could not be loaded.
    bool anyLoaded = false;
};

/// Loads the bundles in those folders, to be shown from top to bottom. One that cannot be loaded
/// leaves the others alone: a line that names it stands in its place. `parentWidth`, in points, is
/// that of the view that the current host's widgets are put into. Main thread.
OpenedWidgets openWidgets(std::span<const std::string> bundlePaths, HostKind kind,
                          CGFloat parentWidth);
