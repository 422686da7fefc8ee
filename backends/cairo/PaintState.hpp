#pragma once

#include "platform/uikit/Geometry.hpp"

#include <optional>

namespace painting {

/// A rectangle of the target in device pixels, independent of the origin.
struct PixelRect {
    double left;
    double top;
    double right;
    double bottom;
    bool operator==(const PixelRect&) const = default;
};

/// The common area; empty if the two do not meet.
PixelRect intersection(const PixelRect& one, const PixelRect& other);

/// Whether the two have an area in common.
bool meet(const PixelRect& one, const PixelRect& other);

/// Whether all of `inner` lies in `outer`.
bool contains(const PixelRect& outer, const PixelRect& inner);

/// The mapping from points of an origin to the target's pixels.
struct PixelGrid {
    double scale;  ///< Pixels a point.
    double x;      ///< The origin, device pixels.
    double y;

    PixelRect pixels(const CGRect& rect) const;
    /// Each edge moved to the nearest pixel edge, so that neighbours stay neighbours. May be empty.
    PixelRect alignedPixels(const CGRect& rect) const;
    /// The same in points.
    CGRect aligned(const CGRect& rect) const;
    double alignedX(double pointX) const;
    double alignedY(double pointY) const;
    /// The rectangle with its edges kept within what the drawing library's coordinates can hold;
    /// nullopt when it is empty or has an edge that is not a number.
    std::optional<CGRect> paintable(const CGRect& rect) const;
};

/// The state that a canvas saves and restores.
struct PaintState {
    PixelGrid grid;
    /// The clip; nullopt for the whole area that the canvas was given.
    std::optional<PixelRect> clip;
    /// The opacity with which everything painted in this state is blended as one picture; nullopt
    /// to paint directly on the target.
    std::optional<double> opacity;
};

}  // namespace painting
