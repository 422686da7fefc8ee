#pragma once

#include "platform/uikit/Geometry.hpp"

#include <cairo.h>

#include <optional>

/// Where the pixels of the target lie in the points of a context, whose matrix may scale and
/// translate but not turn.
class PixelGrid {
 public:
    /// `scale` is in pixels a point, as the context stands now.
    PixelGrid(cairo_t* context, CGFloat scale);

    double scale() const { return scale_; }
    /// The nearest pixel edge, in points of the context's present origin.
    double alignedX(double x) const;
    double alignedY(double y) const;
    /// Each edge moved to the nearest pixel edge, so neighbours stay neighbours. May be empty.
    CGRect aligned(const CGRect& rect) const;

    /// The rectangle with its edges kept within what the library's coordinates can hold; nullopt
    /// when it is empty or not numbers.
    std::optional<CGRect> paintable(const CGRect& rect) const;

 private:
    cairo_t* context_;
    double scale_;
    double pixelsPerUnit_;  ///< Pixels in a unit that the context's matrix leads to.
};
