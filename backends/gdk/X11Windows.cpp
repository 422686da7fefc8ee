#include "backends/gdk/X11Windows.hpp"

#ifdef GDK_WINDOWING_X11

#include "backends/cairo/Handles.hpp"

#include <gdk/gdkx.h>

#include <cstdint>
#include <cstring>

namespace windowing {

namespace {

bool isOnX11(GdkDisplay* display) {
    return GDK_IS_X11_DISPLAY(display);
}

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
    const painting::CairoSurface surface(cairo_image_surface_create_from_png(file.c_str()));
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

std::optional<CGPoint> pointerOnScreen(GdkDisplay* display) {
    if (!isOnX11(display)) return std::nullopt;
    GdkDevice* pointer = gdk_seat_get_pointer(gdk_display_get_default_seat(display));
    if (!pointer) return std::nullopt;
    int x = 0;
    int y = 0;
    gdk_device_get_position(pointer, nullptr, &x, &y);
    return CGPoint{static_cast<CGFloat>(x), static_cast<CGFloat>(y)};
}

std::optional<CGRect> topmostWindowAt(GdkDisplay* display, const CGPoint& point) {
    if (!isOnX11(display)) return std::nullopt;
    GdkWindow* screen = gdk_screen_get_root_window(gdk_display_get_default_screen(display));
    const int scale = gdk_window_get_scale_factor(screen);
    Display* server = gdk_x11_display_get_xdisplay(display);
    const Window root = gdk_x11_window_get_xid(screen);
    Window found = 0;
    Window parent = 0;
    int x = 0;
    int y = 0;
    unsigned width = 0;
    unsigned height = 0;
    unsigned border = 0;
    unsigned depth = 0;
    gdk_x11_display_error_trap_push(display);  // It may go while it is looked at.
    XTranslateCoordinates(server, root, root, static_cast<int>(point.x) * scale,
                          static_cast<int>(point.y) * scale, &x, &y, &found);
    const bool isThere = found != 0 && XGetGeometry(server, found, &parent, &x, &y, &width, &height,
                                                    &border, &depth) != 0;
    gdk_x11_display_error_trap_pop_ignored(display);
    if (!isThere) return std::nullopt;
    const auto points = [scale](auto pixels) {
        return static_cast<CGFloat>(pixels) / static_cast<CGFloat>(scale);
    };
    return CGRectMake(points(x), points(y), points(width + 2 * border),
                      points(height + 2 * border));
}

void setWindowIcon(GdkWindow* window, const std::vector<std::string>& files) {
    GdkDisplay* display = gdk_window_get_display(window);
    if (!isOnX11(display)) return;
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

}  // namespace windowing

#else

namespace windowing {

std::optional<CGPoint> pointerOnScreen(GdkDisplay* /*display*/) {
    return std::nullopt;
}

std::optional<CGRect> topmostWindowAt(GdkDisplay* /*display*/, const CGPoint& /*point*/) {
    return std::nullopt;
}

void setWindowIcon(GdkWindow* /*window*/, const std::vector<std::string>& /*files*/) {}

}  // namespace windowing

#endif
