#pragma once

#include "platform/uikit/UIView.hpp"

#include <memory>
#include <string>

/// The rows of a widget as text, a line for each slider: its caption, and where it stands in
/// percent of its range.
std::string rowReport(const std::shared_ptr<UIView>& widget);
