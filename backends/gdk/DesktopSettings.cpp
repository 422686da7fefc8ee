#include "backends/gdk/DesktopSettings.hpp"

#include "backends/cairo/CairoText.hpp"
#include "platform/uikit/UIAnimator.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#endif

namespace windowing {

namespace {

std::optional<int> integerSetting(GdkScreen* screen, const char* name) {
    GValue value = G_VALUE_INIT;
    g_value_init(&value, G_TYPE_INT);
    if (gdk_screen_get_setting(screen, name, &value) == FALSE) return std::nullopt;
    return g_value_get_int(&value);
}

/// As a truth value: some displays keep it as one, others as a number, and either is converted.
bool switchSetting(GdkScreen* screen, const char* name, bool otherwise) {
    GValue value = G_VALUE_INIT;
    g_value_init(&value, G_TYPE_BOOLEAN);
    if (gdk_screen_get_setting(screen, name, &value) == FALSE) return otherwise;
    return g_value_get_boolean(&value) != FALSE;
}

std::string textSetting(GdkScreen* screen, const char* name) {
    GValue value = G_VALUE_INIT;
    g_value_init(&value, G_TYPE_STRING);
    std::string text;
    if (gdk_screen_get_setting(screen, name, &value) != FALSE) {
        const char* found = g_value_get_string(&value);
        if (found) text = found;
    }
    g_value_unset(&value);
    return text;
}

template <class T, std::size_t size>
T valueNamed(const std::array<std::pair<std::string_view, T>, size>& table, std::string_view name,
             T otherwise) {
    for (const auto& [known, value] : table)
        if (known == name) return value;
    return otherwise;
}

constexpr std::array<std::pair<std::string_view, cairo_hint_style_t>, 4> hintStyles = {{
    {"hintnone", CAIRO_HINT_STYLE_NONE},
    {"hintslight", CAIRO_HINT_STYLE_SLIGHT},
    {"hintmedium", CAIRO_HINT_STYLE_MEDIUM},
    {"hintfull", CAIRO_HINT_STYLE_FULL},
}};

constexpr std::array<std::pair<std::string_view, cairo_subpixel_order_t>, 4> subpixelOrders = {{
    {"rgb", CAIRO_SUBPIXEL_ORDER_RGB},
    {"bgr", CAIRO_SUBPIXEL_ORDER_BGR},
    {"vrgb", CAIRO_SUBPIXEL_ORDER_VRGB},
    {"vbgr", CAIRO_SUBPIXEL_ORDER_VBGR},
}};

/// The panel is see-through, where letters smoothed by sub-pixels would get coloured fringes: such
/// a wish counts as plain smoothing unless the screen cannot show through.
cairo_antialias_t smoothing(GdkScreen* screen, cairo_subpixel_order_t order) {
    const std::optional<int> wanted = integerSetting(screen, "gtk-xft-antialias");
    if (!wanted || *wanted < 0) return CAIRO_ANTIALIAS_DEFAULT;
    if (*wanted == 0) return CAIRO_ANTIALIAS_NONE;
    const bool opaque = gdk_screen_is_composited(screen) == FALSE;
    return opaque && order != CAIRO_SUBPIXEL_ORDER_DEFAULT ? CAIRO_ANTIALIAS_SUBPIXEL
                                                           : CAIRO_ANTIALIAS_GRAY;
}

cairo_hint_style_t hintStyle(GdkScreen* screen) {
    if (integerSetting(screen, "gtk-xft-hinting") == 0) return CAIRO_HINT_STYLE_NONE;
    return valueNamed(hintStyles, textSetting(screen, "gtk-xft-hintstyle"),
                      CAIRO_HINT_STYLE_DEFAULT);
}

void applyFontOptions(GdkScreen* screen) {
    const painting::CairoFontOptions options(cairo_font_options_create());
    const cairo_subpixel_order_t order = valueNamed(
        subpixelOrders, textSetting(screen, "gtk-xft-rgba"), CAIRO_SUBPIXEL_ORDER_DEFAULT);
    cairo_font_options_set_subpixel_order(options.get(), order);
    cairo_font_options_set_antialias(options.get(), smoothing(screen, order));
    cairo_font_options_set_hint_style(options.get(), hintStyle(screen));
    painting::CairoText::shared().setFontOptions(options.get());
}

bool isAboutLooks(const GdkEventSetting& event) {
    const std::string_view name = event.name ? event.name : "";
    return name.starts_with("gtk-xft-") || name == "gtk-enable-animations";
}

/// What people set against a resolution that was told twice; others' toolkits heed it, too.
double scaleFromEnvironment() {
    const char* text = g_getenv("GDK_DPI_SCALE");
    const double scale = text ? g_ascii_strtod(text, nullptr) : 1;
    return scale > 0 && std::isfinite(scale) ? scale : 1;
}

}  // namespace

bool applyDesktopSettings(GdkScreen* screen, const GdkEventSetting* event) {
    if (event && !isAboutLooks(*event)) return false;
    applyFontOptions(screen);
    UIAnimator::shared().setEnabled(switchSetting(screen, "gtk-enable-animations", true));
    return true;
}

/// The display's resolution is the way by which desktops tell it.
double desktopTextScale(GdkScreen* screen) {
    constexpr double usual = 96;    // dots per inch
    constexpr double units = 1024;  // of the setting, in one of those
    constexpr double smallest = 0.5;
    constexpr double largest = 3;
    const std::optional<int> resolution = integerSetting(screen, "gtk-xft-dpi");
    if (!resolution || *resolution <= 0) return 1;
    return std::clamp(*resolution / units / usual * scaleFromEnvironment(), smallest, largest);
}

bool showsThroughWindows(GdkScreen* screen) {
    return gdk_screen_is_composited(screen) != FALSE &&
           gdk_screen_get_rgba_visual(screen) != nullptr;
}

bool takesWindowShadows(GdkScreen* screen) {
    if (!showsThroughWindows(screen)) return false;
#ifdef GDK_WINDOWING_X11
    if (GDK_IS_X11_SCREEN(screen))
        return gdk_x11_screen_supports_net_wm_hint(
                   screen, gdk_atom_intern_static_string("_GTK_FRAME_EXTENTS")) != FALSE;
#endif
    return true;
}

}  // namespace windowing
