#include "backends/cairo/ClipArea.hpp"

#include "backends/cairo/Handles.hpp"

#include <algorithm>
#include <cmath>

namespace {
using ClipRectangles =
    std::unique_ptr<cairo_rectangle_list_t, ReleaseWith<cairo_rectangle_list_destroy>>;
}

ClipArea::ClipArea(cairo_t* context) : context_(context) {
    const ClipRectangles clip(cairo_copy_clip_rectangle_list(context));
    if (clip->status == CAIRO_STATUS_SUCCESS) {
        for (int i = 0; i < clip->num_rectangles; ++i) {
            const cairo_rectangle_t& rect = clip->rectangles[i];
            parts_.push_back(
                edgesOf(context, rect.x, rect.y, rect.x + rect.width, rect.y + rect.height));
        }
        return;
    }
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(context, &left, &top, &right, &bottom);
    isEndless_ = std::isinf(right);
    parts_.push_back(edgesOf(context, left, top, right, bottom));
}

bool ClipArea::meets(const CGRect& rect) const {
    if (CGRectIsEmpty(rect)) return false;
    if (isEndless_) return true;
    const Edges wanted = edgesOf(context_, rect);
    return std::ranges::any_of(parts_, [&](const Edges& part) {
        return wanted.left < part.right && wanted.right > part.left && wanted.top < part.bottom &&
               wanted.bottom > part.top;
    });
}

bool ClipArea::isWithin(const CGRect& rect) const {
    if (isEndless_) return false;
    const Edges around = edgesOf(context_, rect);
    return std::ranges::all_of(parts_, [&](const Edges& part) {
        return around.left <= part.left && around.right >= part.right && around.top <= part.top &&
               around.bottom >= part.bottom;
    });
}
