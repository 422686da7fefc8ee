#include "platform/uikit/NineSlice.hpp"

#include <algorithm>
#include <array>
#include <cmath>

namespace {
/// Three spans along one axis, with their four borders in the bitmap and in the target.
struct Axis {
    std::array<CGFloat, 4> source;
    std::array<CGFloat, 4> target;
};

struct Side {
    CGFloat first;   ///< The cap at the left or top, points.
    CGFloat second;  ///< The cap at the right or bottom, points.
    CGFloat points;  ///< The image's length.
    CGFloat pixels;  ///< The bitmap's length.
};

void fit(CGFloat& first, CGFloat& second, CGFloat length) {
    const CGFloat both = first + second;
    if (both <= length) return;
    first *= length / both;
    second = length - first;
}

Axis axis(const Side& side, CGFloat start, CGFloat length, CGFloat scale) {
    const CGFloat pixelsPerPoint = side.pixels / side.points;
    CGFloat first = std::min(side.first * pixelsPerPoint, side.pixels);
    CGFloat second = std::min(side.second * pixelsPerPoint, side.pixels);
    fit(first, second, side.pixels);
    CGFloat targetFirst = first / pixelsPerPoint;
    CGFloat targetSecond = second / pixelsPerPoint;
    fit(targetFirst, targetSecond, length);
    const bool meet = targetFirst + targetSecond >= length;
    const CGFloat end = start + length;
    // Borders between whole device pixels leave no seam; the outer ones are the caller's.
    const auto snapped = [&](CGFloat at) {
        return std::clamp(std::round(at * scale) / scale, start, end);
    };
    CGFloat border = snapped(start + targetFirst);
    if (first == 0) border = start;
    if (second == 0 && meet) border = end;
    CGFloat other = meet ? border : std::max(border, snapped(end - targetSecond));
    if (second == 0) other = end;
    return {{0, first, side.pixels - second, side.pixels}, {start, border, other, end}};
}

/// Caps that meet leave nothing to stretch but the pixel on either side of their border.
void giveTheMiddleAPixel(CGFloat& from, CGFloat& to, CGFloat pixels) {
    if (to - from > 0) return;
    from = std::max<CGFloat>(from - 1, 0);
    to = std::min(from + 1, pixels);
}
}  // namespace

std::vector<NineSlice::Piece> NineSlice::pieces(const CGRect& rect) const {
    std::vector<Piece> pieces;
    const auto pixelWidth = static_cast<CGFloat>(bitmapSize.width);
    const auto pixelHeight = static_cast<CGFloat>(bitmapSize.height);
    const bool drawable = !CGRectIsEmpty(rect) && !CGRectIsEmpty({{}, imageSize}) &&
                          pixelWidth > 0 && pixelHeight > 0 && scale > 0;
    if (!drawable) return pieces;
    const Axis x = axis({caps.left, caps.right, imageSize.width, pixelWidth}, rect.origin.x,
                        rect.size.width, scale);
    const Axis y = axis({caps.top, caps.bottom, imageSize.height, pixelHeight}, rect.origin.y,
                        rect.size.height, scale);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            CGFloat left = x.source[column], right = x.source[column + 1];
            CGFloat top = y.source[row], bottom = y.source[row + 1];
            if (column == 1) giveTheMiddleAPixel(left, right, pixelWidth);
            if (row == 1) giveTheMiddleAPixel(top, bottom, pixelHeight);
            const Piece piece{
                CGRectMake(left, top, right - left, bottom - top),
                CGRectMake(x.target[column], y.target[row], x.target[column + 1] - x.target[column],
                           y.target[row + 1] - y.target[row])};
            if (!CGRectIsEmpty(piece.source) && !CGRectIsEmpty(piece.target))
                pieces.push_back(piece);
        }
    }
    return pieces;
}
