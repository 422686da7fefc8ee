#include "backends/cairo/CairoPicture.hpp"

#include "backends/cairo/CairoCanvas.hpp"
#include "backends/cairo/Limits.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <cmath>

namespace {

bool isPossibleSide(double pixels) {
    return pixels >= 1 && pixels <= largestSurfaceSide;
}

void paintOn(cairo_surface_t* surface, UIView& view, CGFloat scale) {
    const CairoContext context(cairo_create(surface));
    cairo_scale(context.get(), scale, scale);
    CairoCanvas canvas(context.get(), scale);
    if (auto* window = dynamic_cast<UIWindow*>(&view)) {
        window->layoutAndPaint(canvas, view.bounds());
        return;
    }
    view.layoutIfNeeded();
    view.paint(canvas, view.bounds());
}

}  // namespace

bool paintViewToPNG(const std::shared_ptr<UIView>& view, const std::string& path, CGFloat scale) {
    if (!view || !(scale > 0)) return false;
    const double width = std::ceil(view->bounds().size.width * scale);
    const double height = std::ceil(view->bounds().size.height * scale);
    if (!isPossibleSide(width) || !isPossibleSide(height)) return false;
    const CairoSurface surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, int(width), int(height)));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return false;
    paintOn(surface.get(), *view, scale);
    return cairo_surface_write_to_png(surface.get(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}
