#pragma once

#include "backends/cairo/PixelGrid.hpp"

#include <cairo.h>

/// Paints, in the context's present colour, a rounded rectangle whose edge fades within `blur` on
/// both sides. From masks that are kept, since gradients are slow. The radius is at most half the
/// shorter side.
void fillSoftEdged(cairo_t* context, const PixelGrid& grid, const CGRect& rect, CGFloat radius,
                   CGFloat blur);
