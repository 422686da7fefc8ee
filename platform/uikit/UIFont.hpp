#pragma once

#include "platform/uikit/Geometry.hpp"

#include <string>

/// A typeface family and a size in points. "" is the desktop's sans-serif.
struct UIFont {
    std::string family;
    CGFloat pointSize = 17;
    bool operator==(const UIFont&) const = default;

    static UIFont systemFontOfSize(CGFloat size) { return {"", size}; }
    UIFont fontWithSize(CGFloat size) const { return {family, size}; }
};
