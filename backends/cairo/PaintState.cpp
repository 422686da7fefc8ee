#include "backends/cairo/PaintState.hpp"

#include <algorithm>
#include <cmath>

namespace painting {

namespace {
// Pixels. Cairo counts in 24.8 fixed point; half of that leaves room for the origin.
constexpr double largestPixel = 4.0e6;
}  // namespace

PixelRect intersection(const PixelRect& one, const PixelRect& other) {
    const double left = std::max(one.left, other.left);
    const double top = std::max(one.top, other.top);
    return {left, top, std::max(left, std::min(one.right, other.right)),
            std::max(top, std::min(one.bottom, other.bottom))};
}

bool meet(const PixelRect& one, const PixelRect& other) {
    const PixelRect common = intersection(one, other);
    return common.right > common.left && common.bottom > common.top;
}

bool contains(const PixelRect& outer, const PixelRect& inner) {
    return outer.left <= inner.left && outer.right >= inner.right && outer.top <= inner.top &&
           outer.bottom >= inner.bottom;
}

PixelRect PixelGrid::pixels(const CGRect& rect) const {
    return {rect.origin.x * scale + x, rect.origin.y * scale + y, CGRectGetMaxX(rect) * scale + x,
            CGRectGetMaxY(rect) * scale + y};
}

PixelRect PixelGrid::alignedPixels(const CGRect& rect) const {
    const PixelRect exact = pixels(rect);
    return {std::round(exact.left), std::round(exact.top), std::round(exact.right),
            std::round(exact.bottom)};
}

CGRect PixelGrid::aligned(const CGRect& rect) const {
    const double left = alignedX(rect.origin.x);
    const double top = alignedY(rect.origin.y);
    const double right = alignedX(CGRectGetMaxX(rect));
    const double bottom = alignedY(CGRectGetMaxY(rect));
    return {{CGFloat(left), CGFloat(top)}, {CGFloat(right - left), CGFloat(bottom - top)}};
}

double PixelGrid::alignedX(double pointX) const {
    return (std::round(pointX * scale + x) - x) / scale;
}

double PixelGrid::alignedY(double pointY) const {
    return (std::round(pointY * scale + y) - y) / scale;
}

std::optional<CGRect> PixelGrid::paintable(const CGRect& rect) const {
    const double limit = largestPixel / scale;
    const double left = std::max<double>(rect.origin.x, -limit);
    const double top = std::max<double>(rect.origin.y, -limit);
    const double right = std::min<double>(CGRectGetMaxX(rect), limit);
    const double bottom = std::min<double>(CGRectGetMaxY(rect), limit);
    const bool numbers = !std::isnan(rect.origin.x + rect.origin.y);
    if (!numbers || CGRectIsEmpty(rect) || !(right > left && bottom > top)) return std::nullopt;
    return CGRect{{CGFloat(left), CGFloat(top)}, {CGFloat(right - left), CGFloat(bottom - top)}};
}

}  // namespace painting
