#pragma once

#include "shells/panel/PanelWidget.hpp"

#include <string>

/// Presents the widget, writes a picture (PNG) of it on its panel, two pixels a point, and
/// dismisses it. `notice` is a text below it, nil for none. Needs no display. False when the file
/// cannot be written.
bool paintPanelPicture(PanelWidget& widget, const NSString& notice, const std::string& path);
