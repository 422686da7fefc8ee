#include "tests/support/Paper.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace {

int straight(std::uint32_t channel, std::uint32_t alpha) {
    return alpha == 0 ? 0 : int(std::lround(255.0 * channel / alpha));
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Pixel& pixel) {
    return stream << '(' << pixel.red << ' ' << pixel.green << ' ' << pixel.blue << " / "
                  << pixel.alpha << ')';
}

Paper::Paper(int width, int height, double scale)
    : scale_(scale),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, int(std::ceil(width * scale)),
                                          int(std::ceil(height * scale)))),
      context_(cairo_create(surface_.get())) {
    cairo_scale(context_.get(), scale, scale);
    freshCanvas();
}

painting::CairoCanvas& Paper::freshCanvas() {
    canvas_.reset();
    canvas_ = std::make_unique<painting::CairoCanvas>(context_.get(), CGFloat(scale_));
    return *canvas_;
}

int Paper::pixelsWide() const {
    return cairo_image_surface_get_width(surface_.get());
}

int Paper::pixelsHigh() const {
    return cairo_image_surface_get_height(surface_.get());
}

std::uint32_t Paper::premultiplied(int x, int y) const {
    cairo_surface_flush(surface_.get());
    const unsigned char* data = cairo_image_surface_get_data(surface_.get());
    std::uint32_t value;
    std::memcpy(&value,
                data + std::ptrdiff_t(y) * cairo_image_surface_get_stride(surface_.get()) + 4 * x,
                sizeof value);
    return value;
}

Pixel Paper::at(int x, int y) const {
    const std::uint32_t value = premultiplied(x, y);
    const std::uint32_t alpha = value >> 24;
    return {straight(value >> 16 & 0xff, alpha), straight(value >> 8 & 0xff, alpha),
            straight(value & 0xff, alpha), int(alpha)};
}

bool Paper::rowInked(int y) const {
    for (int x = 0; x < pixelsWide(); ++x) {
        if (premultiplied(x, y) >> 24) return true;
    }
    return false;
}

bool Paper::columnInked(int x) const {
    for (int y = 0; y < pixelsHigh(); ++y) {
        if (premultiplied(x, y) >> 24) return true;
    }
    return false;
}

int Paper::inked(int fromColumn, int toColumn) const {
    int count = 0;
    for (int y = 0; y < pixelsHigh(); ++y) {
        for (int x = fromColumn; x < std::min(toColumn, pixelsWide()); ++x) {
            count += premultiplied(x, y) >> 24 ? 1 : 0;
        }
    }
    return count;
}

int Paper::firstInkedRow() const {
    for (int y = 0; y < pixelsHigh(); ++y) {
        if (rowInked(y)) return y;
    }
    return -1;
}

int Paper::lastInkedRow() const {
    for (int y = pixelsHigh() - 1; y >= 0; --y) {
        if (rowInked(y)) return y;
    }
    return -1;
}

int Paper::firstInkedColumn() const {
    for (int x = 0; x < pixelsWide(); ++x) {
        if (columnInked(x)) return x;
    }
    return -1;
}

int Paper::lastInkedColumn() const {
    for (int x = pixelsWide() - 1; x >= 0; --x) {
        if (columnInked(x)) return x;
    }
    return -1;
}

painting::CairoBitmap bitmapOf(int width, int height,
                               const std::function<std::uint32_t(int, int)>& pixel) {
    painting::CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    unsigned char* data = cairo_image_surface_get_data(surface.get());
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface.get());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::uint32_t value = pixel(x, y);
            std::memcpy(data + y * stride + 4 * x, &value, sizeof value);
        }
    }
    cairo_surface_mark_dirty(surface.get());
    return painting::CairoBitmap(std::move(surface));
}

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "tarnwick-XXXXXX").string();
    if (!::mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}
