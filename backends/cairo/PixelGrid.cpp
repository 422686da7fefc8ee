#include "backends/cairo/PixelGrid.hpp"

#include <algorithm>
#include <cmath>

namespace {

// The library counts in 24.8 fixed point; half of that leaves room for the origin's own offset.
constexpr double largestPixel = 4.0e6;

double aligned(double point, double factor, double offset, double pixelsPerUnit) {
    const double unit = std::round((factor * point + offset) * pixelsPerUnit) / pixelsPerUnit;
    return (unit - offset) / factor;
}

}  // namespace

PixelGrid::PixelGrid(cairo_t* context, CGFloat scale) : context_(context), scale_(scale) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context_, &matrix);
    pixelsPerUnit_ = scale_ / matrix.xx;
}

double PixelGrid::alignedX(double x) const {
    cairo_matrix_t matrix;
    cairo_get_matrix(context_, &matrix);
    return ::aligned(x, matrix.xx, matrix.x0, pixelsPerUnit_);
}

double PixelGrid::alignedY(double y) const {
    cairo_matrix_t matrix;
    cairo_get_matrix(context_, &matrix);
    return ::aligned(y, matrix.yy, matrix.y0, pixelsPerUnit_);
}

CGRect PixelGrid::aligned(const CGRect& rect) const {
    const double left = alignedX(rect.origin.x);
    const double top = alignedY(rect.origin.y);
    const double right = alignedX(CGRectGetMaxX(rect));
    const double bottom = alignedY(CGRectGetMaxY(rect));
    return {{CGFloat(left), CGFloat(top)}, {CGFloat(right - left), CGFloat(bottom - top)}};
}

std::optional<CGRect> PixelGrid::paintable(const CGRect& rect) const {
    const double limit = largestPixel / scale_;
    const double left = std::max<double>(rect.origin.x, -limit);
    const double top = std::max<double>(rect.origin.y, -limit);
    const double right = std::min<double>(CGRectGetMaxX(rect), limit);
    const double bottom = std::min<double>(CGRectGetMaxY(rect), limit);
    const bool numbers = !std::isnan(rect.origin.x + rect.origin.y);
    if (!numbers || CGRectIsEmpty(rect) || !(right > left && bottom > top)) return std::nullopt;
    return CGRect{{CGFloat(left), CGFloat(top)}, {CGFloat(right - left), CGFloat(bottom - top)}};
}
