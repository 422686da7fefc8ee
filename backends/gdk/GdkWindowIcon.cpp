#include "backends/gdk/GdkWindowIcon.hpp"

#ifdef GDK_WINDOWING_X11
#include <cairo.h>
#include <gdk/gdkx.h>

#include <cstdint>
#include <cstring>
#include <memory>

namespace {

struct SurfaceEnd {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceEnd>;

/// What the window system calls a cardinal: a long, of which 32 bits count.
using Cardinals = std::vector<unsigned long>;

constexpr std::uint32_t opaque = 0xFF;

/// The icon's colours are not multiplied by its opacity, the canvas's are.
std::uint32_t straight(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24U;
    if (alpha == 0) return 0;
    const auto channel = [&](unsigned shift) {
        const std::uint32_t multiplied = pixel >> shift & 0xFFU;
        return (multiplied * opaque + alpha / 2) / alpha << shift;
    };
    return alpha << 24U | channel(16) | channel(8) | channel(0);
}

/// Width, height and the rows from above.
void append(Cardinals& icon, const std::string& file) {
    const Surface surface(cairo_image_surface_create_from_png(file.c_str()));
    cairo_surface_t* image = surface.get();
    if (cairo_surface_status(image) != CAIRO_STATUS_SUCCESS) return;
    const bool hasAlpha = cairo_image_surface_get_format(image) == CAIRO_FORMAT_ARGB32;
    const int width = cairo_image_surface_get_width(image);
    const int height = cairo_image_surface_get_height(image);
    constexpr int largest = 256;  // pixels; the property is to pass the server in one piece
    if (!hasAlpha || width > largest || height > largest) return;
    icon.push_back(static_cast<unsigned long>(width));
    icon.push_back(static_cast<unsigned long>(height));
    const unsigned char* row = cairo_image_surface_get_data(image);
    for (int y = 0; y < height; ++y, row += cairo_image_surface_get_stride(image))
        for (int x = 0; x < width; ++x) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, row + sizeof pixel * static_cast<std::size_t>(x), sizeof pixel);
            icon.push_back(straight(pixel));
        }
}

}  // namespace

void setWindowIcon(GdkWindow* window, const std::vector<std::string>& files) {
    GdkDisplay* display = gdk_window_get_display(window);
    if (!GDK_IS_X11_DISPLAY(display)) return;
    Cardinals icon;
    for (const std::string& file : files)
        append(icon, file);
    if (icon.empty()) return;
    constexpr int bitsOfACardinal = 32;
    gdk_property_change(window, gdk_atom_intern_static_string("_NET_WM_ICON"),
                        gdk_atom_intern_static_string("CARDINAL"), bitsOfACardinal,
                        GDK_PROP_MODE_REPLACE, reinterpret_cast<const guchar*>(icon.data()),
                        static_cast<int>(icon.size()));
}

#else

void setWindowIcon(GdkWindow* /*window*/, const std::vector<std::string>& /*files*/) {}

#endif
