#pragma once

#include "platform/uikit/UIView.hpp"

#include <memory>

/// What stands on the panel where a widget has no rows: that there are none to show, and the file
/// where they are chosen. `width` is in points; the height is the notice's own.
std::shared_ptr<UIView> makeEmptyNotice(CGFloat width);
