#include "tests/support/Picture.hpp"

#include "backends/cairo/Handles.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

unsigned char* row(cairo_surface_t* image, int y) {
    return cairo_image_surface_get_data(image) +
           std::ptrdiff_t(y) * cairo_image_surface_get_stride(image);
}

painting::CairoSurface surfaceOf(int width, int height) {
    return painting::CairoSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
}

}  // namespace

Picture::Picture(int wide, int high)
    : width(wide), height(high), pixels(std::size_t(wide) * std::size_t(high)) {}

std::optional<Picture> Picture::read(const std::string& path) {
    const painting::CairoSurface file(cairo_image_surface_create_from_png(path.c_str()));
    if (cairo_surface_status(file.get()) != CAIRO_STATUS_SUCCESS) return std::nullopt;
    Picture picture(cairo_image_surface_get_width(file.get()),
                    cairo_image_surface_get_height(file.get()));
    const painting::CairoSurface surface = surfaceOf(picture.width, picture.height);
    const painting::CairoContext context(cairo_create(surface.get()));
    cairo_set_source_surface(context.get(), file.get(), 0, 0);
    cairo_paint(context.get());
    cairo_surface_flush(surface.get());
    for (int y = 0; y < picture.height; ++y)
        std::memcpy(&picture.at(0, y), row(surface.get(), y), 4 * std::size_t(picture.width));
    return picture;
}

bool Picture::write(const std::string& path) const {
    const painting::CairoSurface surface = surfaceOf(width, height);
    for (int y = 0; y < height; ++y)
        std::memcpy(row(surface.get(), y), pixels.data() + index(0, y), 4 * std::size_t(width));
    cairo_surface_mark_dirty(surface.get());
    return cairo_surface_write_to_png(surface.get(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}

std::string Picture::size() const {
    return std::to_string(width) + " x " + std::to_string(height);
}

int levelsApart(std::uint32_t one, std::uint32_t other) {
    int most = 0;
    for (const int number : {0, 1, 2, 3})
        most = std::max(most, std::abs(channel(one, number) - channel(other, number)));
    return most;
}
