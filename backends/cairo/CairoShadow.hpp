#pragma once

#include "backends/cairo/PixelGrid.hpp"

#include <cairo.h>

/// Paints in the context's present colour a circle whose edge fades within `blur` on both sides.
void fillCircleShadow(cairo_t* context, const CGRect& circle, CGFloat blur);

/// The same for a rounded rectangle, from masks that are kept. The radius is at most half the
/// shorter side.
void fillRoundedShadow(cairo_t* context, const PixelGrid& grid, const CGRect& rect, CGFloat radius,
                       CGFloat blur);
