#pragma once

#include "platform/uikit/UIView.hpp"

#include <memory>
#include <string>

namespace shell {

/// A view as text, a line for each slider: its caption, a bar, and its position in percent of its
/// range unless the caption contains it. Without sliders, its labels.
std::string rowReport(const std::shared_ptr<UIView>& view);

}  // namespace shell
