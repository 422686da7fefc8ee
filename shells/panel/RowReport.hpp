#pragma once

#include "platform/uikit/UIView.hpp"

#include <memory>
#include <string>

/// What a view shows as text, a line for each slider: its caption, a bar, and where it stands in
/// percent of its range unless the caption tells so already. Without sliders, its labels.
std::string rowReport(const std::shared_ptr<UIView>& view);
