#include "backends/cairo/CairoPicture.hpp"

#include "backends/cairo/CairoCanvas.hpp"
#include "backends/cairo/Handles.hpp"

#include <cmath>
#include <utility>

namespace painting {

namespace {

constexpr double largestPictureSide = 32767;      // pixels; Cairo makes no larger surface
constexpr double mostPicturePixels = 64'000'000;  // four bytes each

bool isPossibleSide(double pixels) {
    return pixels >= 1 && pixels <= largestPictureSide;
}

/// An image surface for the size; nullptr where Cairo makes none.
CairoSurface imageSurface(double width, double height) {
    if (!isPossibleSide(width) || !isPossibleSide(height)) return nullptr;
    CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, int(width), int(height)));
    const bool isThere = cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS;
    return isThere ? std::move(surface) : nullptr;
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

bool paintViewToPNG(const std::shared_ptr<UIView>& view, const std::string& path, CGFloat scale) {
    if (!view || !(scale > 0)) return false;
    const CairoSurface surface = imageSurface(std::ceil(view->bounds().size.width * scale),
                                              std::ceil(view->bounds().size.height * scale));
    if (!surface) return false;
    paintOn(surface.get(), *view, scale);
    return cairo_surface_write_to_png(surface.get(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}

struct CairoWindowPicture::Surface {
    CairoSurface pixels;
};

std::unique_ptr<CairoWindowPicture> CairoWindowPicture::create(const CGSize& size, CGFloat scale) {
    const double width = std::ceil(size.width * scale);
    const double height = std::ceil(size.height * scale);
    if (!(width * height <= mostPicturePixels)) return nullptr;
    CairoSurface pixels = imageSurface(width, height);
    if (!pixels) return nullptr;
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

}  // namespace painting
