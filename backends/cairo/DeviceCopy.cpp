#include "backends/cairo/DeviceCopy.hpp"

#include <utility>

namespace {

// Pixels, a megabyte: many times what skins are made of. A server without room for a copy would end
// the program, and of a large image less is sent than there is: what is seen of it.
constexpr long mostPixels = 512L * 512;

bool isSmall(cairo_surface_t* image) {
    return long{cairo_image_surface_get_width(image)} * cairo_image_surface_get_height(image) <=
           mostPixels;
}

// A surface that is made for a target takes over its scale, and may have no size in whole pixels.
bool countsInPixels(cairo_surface_t* target) {
    double across = 0;
    double down = 0;
    cairo_surface_get_device_scale(target, &across, &down);
    return across == 1 && down == 1;
}

// Row by row where a row is short. For as much as 128 bytes at once the library shares half a
// megabyte with the server, keeps a list of fifty kilobytes of it, and waits until the server has
// it.
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
