#pragma once

#include "platform/uikit/Geometry.hpp"

#include <cairo.h>

/// A rectangle in the units that a context's matrix leads to, which moving the matrix leaves as it
/// is.
struct Edges {
    double left;
    double top;
    double right;
    double bottom;
    bool operator==(const Edges&) const = default;
};

/// Of a rectangle in the context's coordinates of now.
Edges edgesOf(cairo_t* context, double left, double top, double right, double bottom);
Edges edgesOf(cairo_t* context, const CGRect& rect);

/// Without area where the two don't meet.
Edges intersection(const Edges& one, const Edges& other);
