#pragma once

#include "backends/cairo/Edges.hpp"
#include "platform/uikit/Geometry.hpp"

#include <cairo.h>

#include <vector>

/// What a context can be seen to paint on, as it was clipped at one time. Main thread.
class ClipArea {
 public:
    explicit ClipArea(cairo_t* context);

    /// Whether it meets the rectangle, given in the context's coordinates of now. A clip that is
    /// no set of rectangles counts as the rectangle around it; an endless surface is met by all.
    bool meets(const CGRect& rect) const;
    /// Whether all of it lies in the rectangle, given likewise: clipping to that changes nothing.
    bool isWithin(const CGRect& rect) const;

 private:
    cairo_t* context_;
    std::vector<Edges> parts_;
    bool isEndless_ = false;
};
