#include "backends/cairo/CairoWindowPicture.hpp"

#include "backends/cairo/CairoCanvas.hpp"
#include "backends/cairo/Handles.hpp"
#include "backends/cairo/Limits.hpp"

#include <cmath>

namespace {

constexpr double mostPixels = 64'000'000;  // Of four bytes.

bool isPossible(double width, double height) {
    return width >= 1 && height >= 1 && width <= largestSurfaceSide &&
           height <= largestSurfaceSide && width * height <= mostPixels;
}

/// The rectangle in points, grown outwards to whole pixels.
CGRect wholePixels(const CGRect& rect, double scale) {
    const double left = std::floor(rect.origin.x * scale) / scale;
    const double top = std::floor(rect.origin.y * scale) / scale;
    const double right = std::ceil(CGRectGetMaxX(rect) * scale) / scale;
    const double bottom = std::ceil(CGRectGetMaxY(rect) * scale) / scale;
    return CGRectMake(CGFloat(left), CGFloat(top), CGFloat(right - left), CGFloat(bottom - top));
}

void clear(cairo_t* context) {
    const cairo_operator_t before = cairo_get_operator(context);
    cairo_set_operator(context, CAIRO_OPERATOR_CLEAR);
    cairo_paint(context);
    cairo_set_operator(context, before);
}

}  // namespace

struct CairoWindowPicture::Surface {
    CairoSurface pixels;
};

std::unique_ptr<CairoWindowPicture> CairoWindowPicture::create(const CGSize& size, CGFloat scale) {
    const double width = std::ceil(size.width * scale);
    const double height = std::ceil(size.height * scale);
    if (!isPossible(width, height)) return nullptr;
    CairoSurface pixels(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, int(width), int(height)));
    if (cairo_surface_status(pixels.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    auto surface = std::make_unique<Surface>(Surface{std::move(pixels)});
    return std::make_unique<CairoWindowPicture>(size, scale, std::move(surface));
}

CairoWindowPicture::CairoWindowPicture(const CGSize& size, CGFloat scale,
                                       std::unique_ptr<Surface> surface)
    : size_(size), scale_(scale), surface_(std::move(surface)) {}

CairoWindowPicture::~CairoWindowPicture() = default;

void CairoWindowPicture::paint(UIWindow& window, const std::vector<CGRect>& damage) {
    for (const CGRect& rect : damage) {
        const CairoContext context(cairo_create(surface_->pixels.get()));
        cairo_scale(context.get(), scale_, scale_);
        const CGRect renewed = wholePixels(rect, scale_);
        cairo_rectangle(context.get(), renewed.origin.x, renewed.origin.y, renewed.size.width,
                        renewed.size.height);
        cairo_clip(context.get());
        clear(context.get());
        CairoCanvas canvas(context.get(), scale_);
        window.layoutAndPaint(canvas, renewed);
    }
}

std::optional<std::string> CairoWindowPicture::writePNG(const std::string& path) const {
    const cairo_status_t status = cairo_surface_write_to_png(surface_->pixels.get(), path.c_str());
    if (status == CAIRO_STATUS_SUCCESS) return std::nullopt;
    return cairo_status_to_string(status);
}
