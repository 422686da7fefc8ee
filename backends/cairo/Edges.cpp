#include "backends/cairo/Edges.hpp"

#include <algorithm>

Edges edgesOf(cairo_t* context, double left, double top, double right, double bottom) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    cairo_matrix_transform_point(&matrix, &left, &top);
    cairo_matrix_transform_point(&matrix, &right, &bottom);
    return {left, top, right, bottom};
}

Edges edgesOf(cairo_t* context, const CGRect& rect) {
    return edgesOf(context, rect.origin.x, rect.origin.y, CGRectGetMaxX(rect), CGRectGetMaxY(rect));
}

Edges intersection(const Edges& one, const Edges& other) {
    const double left = std::max(one.left, other.left);
    const double top = std::max(one.top, other.top);
    return {left, top, std::max(left, std::min(one.right, other.right)),
            std::max(top, std::min(one.bottom, other.bottom))};
}
