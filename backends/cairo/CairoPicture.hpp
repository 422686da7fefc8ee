#pragma once

#include "platform/uikit/UIView.hpp"

#include <memory>
#include <string>

/// Lays out and paints a view, or a window, with its subviews on nothing and writes a PNG file.
/// `scale` is in pixels a point. False when the view has no area or more than 32,767 pixels in a
/// direction, or the file cannot be written.
bool paintViewToPNG(const std::shared_ptr<UIView>& view, const std::string& path, CGFloat scale);
