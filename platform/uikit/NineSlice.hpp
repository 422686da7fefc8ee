#pragma once

#include "platform/uikit/UIImage.hpp"

#include <vector>

/// How an image with cap insets fills a rectangle: the corners keep their size, the edges and the
/// middle are stretched. No painting.
struct NineSlice {
    struct Piece {
        CGRect source;  ///< Pixels of the bitmap.
        CGRect target;  ///< Points.
    };

    CGSize imageSize;   ///< Points.
    UIEdgeInsets caps;  ///< Points, not negative.
    PixelSize bitmapSize;
    CGFloat scale = 1;  ///< Pixels of the canvas a point.

    /// Without gaps or overlaps, and none of them empty. Caps that do not fit shrink in proportion.
    std::vector<Piece> pieces(const CGRect& rect) const;
};
