#include "platform/uikit/UIBitmap.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {
constexpr int halfOpaque = 128;  // Of 255.
}

UIImageOutline outlineOf(const UIBitmap& bitmap) {
    const PixelSize size = bitmap.size();
    int left = size.width;
    int top = size.height;
    int right = -1;
    int bottom = -1;
    double opaque = 0;
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            if (bitmap.alphaAt(x, y) < halfOpaque) continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = y;
            ++opaque;
        }
    }
    if (right < 0)
        return {
            CGRectMake(0, 0, static_cast<CGFloat>(size.width), static_cast<CGFloat>(size.height))};
    const double width = right - left + 1;
    const double height = bottom - top + 1;
    // Four round corners leave (4 - pi) r² of their rectangle empty.
    const double missing = width * height - opaque;
    const double radius = std::sqrt(missing / (4 - std::numbers::pi));
    return {CGRectMake(static_cast<CGFloat>(left), static_cast<CGFloat>(top),
                       static_cast<CGFloat>(width), static_cast<CGFloat>(height)),
            static_cast<CGFloat>(std::min(radius, std::min(width, height) / 2))};
}
