#pragma once

#include <algorithm>

/// Pixels; the library makes no larger surface.
inline constexpr double largestSurfaceSide = 32767;

/// Of a colour, as the library wants it: from 0 to 1, and 0 for what is no number.
inline double component(double value) {
    return value > 0 ? std::min(value, 1.0) : 0;
}
