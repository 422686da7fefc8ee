#pragma once

#include "shells/panel/PanelView.hpp"
#include "shells/panel/PanelWidget.hpp"

#include <string>

namespace desktop {

/// Presents the widget, writes a picture (PNG) of it on the panel, two pixels a point, and
/// dismisses it. Needs no display. False when the file cannot be written.
bool paintPanelPicture(shell::PanelWidget& widget, const std::shared_ptr<shell::PanelView>& panel,
                       const std::string& path);

}  // namespace desktop
