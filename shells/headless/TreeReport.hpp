#pragma once

#include "platform/uikit/UIView.hpp"
#include "shells/headless/Json.hpp"

namespace headless {

/// The view with its subviews, back to front, as the "tree" command answers it.
Json treeFrom(const UIView& view);

/// [x, y, width, height]
Json jsonRectangle(const CGRect& rectangle);

}  // namespace headless
