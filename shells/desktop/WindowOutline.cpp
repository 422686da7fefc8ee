#include "shells/desktop/WindowOutline.hpp"

#include <cmath>
#include <memory>

namespace {

struct RegionEnd {
    void operator()(cairo_region_t* region) const { cairo_region_destroy(region); }
};
using Region = std::unique_ptr<cairo_region_t, RegionEnd>;

/// How far the corner's arc lies inside the edge, `row` points below the top, in whole points.
int cornerInset(int row, double radius) {
    const double fromCentre = radius - row - 0.5;
    if (fromCentre <= 0) return 0;
    return static_cast<int>(
        std::lround(radius - std::sqrt(radius * radius - fromCentre * fromCentre)));
}

Region roundedRegion(const CGRect& rect, CGFloat radius) {
    Region region(cairo_region_create());
    const auto x = static_cast<int>(rect.origin.x);
    const auto y = static_cast<int>(rect.origin.y);
    const auto width = static_cast<int>(rect.size.width);
    const auto height = static_cast<int>(rect.size.height);
    for (int row = 0; row < height; ++row) {
        const int inset = cornerInset(std::min(row, height - 1 - row), radius);
        const cairo_rectangle_int_t line = {x + inset, y + row, width - 2 * inset, 1};
        cairo_region_union_rectangle(region.get(), &line);
    }
    return region;
}

}  // namespace

void outlineWindow(GdkWindow* window, const PanelLayout& layout, const PanelLook& look) {
    const Region panel = roundedRegion(layout.panel, cornerRadius(look.edge) * look.zoom);
    gdk_window_input_shape_combine_region(window, panel.get(), 0, 0);
    const bool cut = look.edge == PanelEdge::Square;
    gdk_window_shape_combine_region(window, cut ? panel.get() : nullptr, 0, 0);
}

void marginWindow(GdkWindow* window, const PanelLook& look) {
    const UIEdgeInsets margins = panelMargins(look);
    gdk_window_set_shadow_width(window, static_cast<int>(margins.left),
                                static_cast<int>(margins.right), static_cast<int>(margins.top),
                                static_cast<int>(margins.bottom));
}
