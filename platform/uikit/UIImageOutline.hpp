#pragma once

#include "platform/uikit/Geometry.hpp"

class UIBitmap;

/// What is to be seen of an image without the soft shadow around it.
struct UIImageOutline {
    CGRect rect;         ///< The smallest one around all pixels that are at least half opaque.
    CGFloat radius = 0;  ///< Of its corners, as if they were alike: half the side for a circle.
};

/// In pixels of the bitmap. An image without such pixels is taken as a whole.
UIImageOutline outlineOf(const UIBitmap& bitmap);
