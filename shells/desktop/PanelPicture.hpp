#pragma once

#include "shells/desktop/HostedWidget.hpp"

#include <string>

/// Presents the widget, writes a picture (PNG) of it on its panel, two pixels a point, and
/// dismisses it. Needs no display. False when the file cannot be written.
bool paintPanelPicture(HostedWidget& widget, const std::string& path);
