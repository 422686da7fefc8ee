#include "backends/cairo/CairoBitmap.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

namespace painting {

namespace {

constexpr std::size_t tintsKept = 4;  // skins use one or two tints of an image

using Table = std::array<std::uint8_t, 256>;

Table multiplied(double factor) {
    Table table;
    for (std::size_t value = 0; value < table.size(); ++value) {
        table[value] = std::uint8_t(std::lround(double(value) * factor));
    }
    return table;
}

CairoSurface argbSurface(int width, int height) {
    return CairoSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
}

bool isUsable(const CairoSurface& surface) {
    return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS;
}

// Images without alpha or with deep channels come in other formats.
CairoSurface asArgb(CairoSurface surface) {
    if (cairo_image_surface_get_format(surface.get()) == CAIRO_FORMAT_ARGB32) return surface;
    CairoSurface copy = argbSurface(cairo_image_surface_get_width(surface.get()),
                                    cairo_image_surface_get_height(surface.get()));
    const CairoContext context(cairo_create(copy.get()));
    cairo_set_operator(context.get(), CAIRO_OPERATOR_SOURCE);
    cairo_set_source_surface(context.get(), surface.get(), 0, 0);
    cairo_paint(context.get());
    return copy;
}

struct Tint {
    /// Of a colour whose components are within 0 to 1.
    explicit Tint(const UIColor& color)
        : alpha(multiplied(color.alpha)),
          red(multiplied(color.red * color.alpha)),
          green(multiplied(color.green * color.alpha)),
          blue(multiplied(color.blue * color.alpha)) {}

    std::uint32_t operator()(std::uint32_t pixel) const {
        return std::uint32_t(alpha[pixel >> 24]) << 24 |
               std::uint32_t(red[pixel >> 16 & 0xff]) << 16 |
               std::uint32_t(green[pixel >> 8 & 0xff]) << 8 | blue[pixel & 0xff];
    }

    Table alpha;
    Table red;
    Table green;
    Table blue;
};

void tintRow(const unsigned char* from, unsigned char* to, int pixels, const Tint& tint) {
    for (int x = 0; x < pixels; ++x) {
        std::uint32_t pixel;
        std::memcpy(&pixel, from, sizeof pixel);
        pixel = tint(pixel);
        std::memcpy(to, &pixel, sizeof pixel);
        from += sizeof pixel;
        to += sizeof pixel;
    }
}

CairoSurface tintedCopy(cairo_surface_t* surface, const UIColor& color) {
    const int width = cairo_image_surface_get_width(surface);
    const int height = cairo_image_surface_get_height(surface);
    CairoSurface copy = argbSurface(width, height);
    if (!isUsable(copy)) return nullptr;

    cairo_surface_flush(surface);
    const unsigned char* from = cairo_image_surface_get_data(surface);
    unsigned char* to = cairo_image_surface_get_data(copy.get());
    const Tint tint(color.clamped());
    for (int y = 0; y < height; ++y) {
        tintRow(from + std::ptrdiff_t(y) * cairo_image_surface_get_stride(surface),
                to + std::ptrdiff_t(y) * cairo_image_surface_get_stride(copy.get()), width, tint);
    }
    cairo_surface_mark_dirty(copy.get());
    return copy;
}

bool changesNothing(const UIColor& color) {
    return color.red >= 1 && color.green >= 1 && color.blue >= 1 && color.alpha >= 1;
}

}  // namespace

CairoBitmap::CairoBitmap(CairoSurface surface)
    : plain_{UIColor::whiteColor(), asArgb(std::move(surface)), {}} {}

PixelSize CairoBitmap::size() const {
    return {cairo_image_surface_get_width(surface()), cairo_image_surface_get_height(surface())};
}

int CairoBitmap::alphaAt(int x, int y) const {
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface());
    const unsigned char* row = cairo_image_surface_get_data(surface()) + y * stride;
    std::uint32_t pixel;
    std::memcpy(&pixel, row + std::ptrdiff_t(x) * std::ptrdiff_t(sizeof pixel), sizeof pixel);
    return int(pixel >> 24);
}

CairoBitmap::Look* CairoBitmap::look(const UIColor& color) const {
    if (changesNothing(color)) return &plain_;
    const auto known = std::ranges::find(tinted_, color, &Look::color);
    if (known != tinted_.end()) return &*known;

    CairoSurface copy = tintedCopy(surface(), color);
    if (!copy) return nullptr;
    if (tinted_.size() == tintsKept) tinted_.erase(tinted_.begin());
    tinted_.push_back({color, std::move(copy), {}});
    return &tinted_.back();
}

cairo_surface_t* CairoBitmap::tinted(const UIColor& color) const {
    const Look* found = look(color);
    return found ? found->image.get() : nullptr;
}

cairo_surface_t* CairoBitmap::tintedFor(cairo_surface_t* target, const UIColor& color) const {
    Look* found = look(color);
    return found ? found->copy.of(found->image.get(), target) : nullptr;
}

namespace {

// Pixels, a megabyte: many times the images of a skin. A server without memory for a copy would end
// the program, and of a large image only the visible part is sent.
constexpr long mostCopiedPixels = 512L * 512;

bool isSmall(cairo_surface_t* image) {
    return long{cairo_image_surface_get_width(image)} * cairo_image_surface_get_height(image) <=
           mostCopiedPixels;
}

// A surface that is made for a target takes over its scale, and may have no size in whole pixels.
bool countsInPixels(cairo_surface_t* target) {
    double across = 0;
    double down = 0;
    cairo_surface_get_device_scale(target, &across, &down);
    return across == 1 && down == 1;
}

// Row by row if rows are short. For 128 bytes or more at once, Cairo shares half a megabyte with
// the server, keeps a list of 50 kB for it, and waits for the server.
void paint(cairo_t* context, cairo_surface_t* image) {
    constexpr int shortRow = 128 / 4;  // pixels
    const int width = cairo_image_surface_get_width(image);
    const int height = cairo_image_surface_get_height(image);
    const int rows = width < shortRow ? 1 : height;
    cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
    cairo_set_source_surface(context, image, 0, 0);
    for (int y = 0; y < height; y += rows) {
        cairo_rectangle(context, 0, y, width, rows);
        cairo_fill(context);
    }
}

CairoSurface copyFor(cairo_surface_t* target, cairo_surface_t* image) {
    CairoSurface copy(cairo_surface_create_similar(target, CAIRO_CONTENT_COLOR_ALPHA,
                                                   cairo_image_surface_get_width(image),
                                                   cairo_image_surface_get_height(image)));
    const CairoContext context(cairo_create(copy.get()));
    paint(context.get(), image);
    const bool isThere = cairo_status(context.get()) == CAIRO_STATUS_SUCCESS &&
                         cairo_surface_get_device(copy.get()) == cairo_surface_get_device(target);
    return isThere ? std::move(copy) : nullptr;
}

}  // namespace

cairo_surface_t* DeviceCopy::of(cairo_surface_t* image, cairo_surface_t* target) {
    cairo_device_t* device = cairo_surface_get_device(target);
    if (device == nullptr || !countsInPixels(target) || !isSmall(image)) return image;
    if (device != device_.get()) {
        device_.reset(cairo_device_reference(device));
        copy_ = copyFor(target, image);
    }
    return copy_ ? copy_.get() : image;
}

}  // namespace painting
