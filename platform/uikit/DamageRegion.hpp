#pragma once

#include "platform/uikit/Geometry.hpp"

#include <vector>

/// The area that must be painted again, as non-overlapping rectangles.
///
/// Add what has changed, then take the rectangles and paint each:
///
///     region.add(label->frame(), window->bounds());
///     for (const CGRect& rect : region.take())
///         paint(rect);
///
/// Rectangles are rounded outwards to whole points. Two are joined if painting them together costs
/// no more than painting each, and the nearest ones are joined when there are more than 16.
class DamageRegion {
 public:
    bool isEmpty() const { return rects_.empty(); }
    const std::vector<CGRect>& rects() const { return rects_; }
    /// Adds what of the rectangle lies within `bounds`. An empty one changes nothing.
    void add(const CGRect& rect, const CGRect& bounds);
    void clear() { rects_.clear(); }
    /// The rectangles; the region is empty afterwards.
    std::vector<CGRect> take();

 private:
    void include(const CGRect& rect);
    void joinWithNearest(CGRect rect);

    std::vector<CGRect> rects_;
};
