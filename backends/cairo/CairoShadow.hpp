#pragma once

#include "backends/cairo/PaintState.hpp"

#include <cairo.h>

namespace painting {

/// Paints a rounded rectangle in the context's current colour, whose edge fades within `blur` on
/// both sides. It uses cached masks, since gradients are slow. The radius is limited to half the
/// shorter side.
void fillSoftEdged(cairo_t* context, const PixelGrid& grid, const CGRect& rect, CGFloat radius,
                   CGFloat blur);

}  // namespace painting
