#include "backends/cairo/CairoShadow.hpp"

#include "backends/cairo/Handles.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

namespace painting {

namespace {

constexpr std::size_t masksKept = 8;
// Larger shadows are sharper, not slower to make.
constexpr double largestRadius = 256;  // pixels
constexpr double largestBlur = 128;    // pixels

/// All in pixels.
struct MaskShape {
    int width;
    int height;
    double radius;
    double blur;
    bool operator==(const MaskShape&) const = default;
};

struct Mask {
    MaskShape shape;
    CairoSurface surface;
};

/// How much of the shadow is left at a distance from the edge, positive outside.
double coverage(double distance, double blur) {
    const double t = std::clamp((blur - distance) / (2 * blur), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double distanceFromEdge(const MaskShape& shape, double x, double y) {
    const double halfWidth = shape.width / 2.0 - shape.blur - shape.radius;
    const double halfHeight = shape.height / 2.0 - shape.blur - shape.radius;
    const double dx = std::abs(x - shape.width / 2.0) - halfWidth;
    const double dy = std::abs(y - shape.height / 2.0) - halfHeight;
    const double outside = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
    return outside + std::min(std::max(dx, dy), 0.0) - shape.radius;
}

CairoSurface drawnMask(const MaskShape& shape) {
    CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_A8, shape.width, shape.height));
    unsigned char* data = cairo_image_surface_get_data(surface.get());
    if (!data) return nullptr;
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface.get());
    for (int y = 0; y < shape.height; ++y) {
        for (int x = 0; x < shape.width; ++x) {
            const double distance = distanceFromEdge(shape, x + 0.5, y + 0.5);
            data[y * stride + x] =
                static_cast<unsigned char>(std::lround(255 * coverage(distance, shape.blur)));
        }
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

cairo_surface_t* keptMask(const MaskShape& shape) {
    static std::vector<Mask> masks;
    const auto known = std::ranges::find(masks, shape, &Mask::shape);
    if (known != masks.end()) return known->surface.get();
    CairoSurface surface = drawnMask(shape);
    if (!surface) return nullptr;
    if (masks.size() == masksKept) masks.erase(masks.begin());
    return masks.emplace_back(Mask{shape, std::move(surface)}).surface.get();
}

/// A stretch of pixels of the mask and the stretch that it covers.
struct Span {
    double source;
    double sourceLength;
    double target;
    double targetLength;
};

// The middle pixel of a mask that is smaller than what it covers is stretched.
std::vector<Span> spans(double length, int maskLength) {
    if (length <= maskLength) return {{0, double(maskLength), 0, length}};
    const double corner = (maskLength - 1) / 2.0;
    const double middle = length - 2 * corner;
    return {{0, corner, 0, corner},
            {corner, 1, corner, middle},
            {corner + 1, corner, corner + middle, corner}};
}

void paintPatch(cairo_t* context, cairo_surface_t* mask, const Span& x, const Span& y) {
    const CairoPattern pattern(cairo_pattern_create_for_surface(mask));
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, x.sourceLength / x.targetLength, 0, 0,
                      y.sourceLength / y.targetLength, 0, 0);
    matrix.x0 = x.source - x.target * matrix.xx;
    matrix.y0 = y.source - y.target * matrix.yy;
    cairo_pattern_set_matrix(pattern.get(), &matrix);
    cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_NEAREST);
    cairo_save(context);
    cairo_rectangle(context, x.target, y.target, x.targetLength, y.targetLength);
    cairo_clip(context);
    cairo_mask(context, pattern.get());
    cairo_restore(context);
}

int maskLength(double length, int corner) {
    return int(std::min<double>(std::lround(length), 2 * corner + 1));
}

}  // namespace

void fillSoftEdged(cairo_t* context, const PixelGrid& grid, const CGRect& rect, CGFloat radius,
                   CGFloat blur) {
    const double scale = grid.scale;
    const double blurPixels = std::min(blur * scale, largestBlur);
    // A blur rounds corners; a sharp one would leave a crease in the shadow.
    const double half = std::min(rect.size.width, rect.size.height) * scale / 2;
    const double radiusPixels =
        std::min({std::max<double>(radius * scale, blurPixels), half, largestRadius});
    const auto reach = CGFloat(blurPixels / scale);
    const CGRect outer = grid.aligned(CGRectInset(rect, -reach, -reach));
    const double width = outer.size.width * scale;
    const double height = outer.size.height * scale;
    const int corner = int(std::ceil(std::max(radiusPixels, blurPixels) + blurPixels)) + 1;
    const MaskShape shape{maskLength(width, corner), maskLength(height, corner), radiusPixels,
                          blurPixels};
    cairo_surface_t* mask = keptMask(shape);
    if (!mask) return;

    cairo_save(context);
    cairo_translate(context, outer.origin.x, outer.origin.y);
    cairo_scale(context, 1 / scale, 1 / scale);
    for (const Span& y : spans(height, shape.height)) {
        for (const Span& x : spans(width, shape.width)) {
            paintPatch(context, mask, x, y);
        }
    }
    cairo_restore(context);
}

}  // namespace painting
