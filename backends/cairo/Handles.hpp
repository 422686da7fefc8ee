#pragma once

#include <cairo.h>
#include <pango/pangocairo.h>

#include <memory>

namespace painting {

/// Owners of the libraries' objects, by the function that gives one reference back.
template <auto release>
struct ReleaseWith {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};

using CairoContext = std::unique_ptr<cairo_t, ReleaseWith<cairo_destroy>>;
using CairoSurface = std::unique_ptr<cairo_surface_t, ReleaseWith<cairo_surface_destroy>>;
using CairoPattern = std::unique_ptr<cairo_pattern_t, ReleaseWith<cairo_pattern_destroy>>;
using CairoDevice = std::unique_ptr<cairo_device_t, ReleaseWith<cairo_device_destroy>>;
using CairoFontOptions =
    std::unique_ptr<cairo_font_options_t, ReleaseWith<cairo_font_options_destroy>>;
using PangoContextPtr = std::unique_ptr<PangoContext, ReleaseWith<g_object_unref>>;
using PangoLayoutPtr = std::unique_ptr<PangoLayout, ReleaseWith<g_object_unref>>;
using PangoFontPtr = std::unique_ptr<PangoFont, ReleaseWith<g_object_unref>>;
using PangoFontDescriptionPtr =
    std::unique_ptr<PangoFontDescription, ReleaseWith<pango_font_description_free>>;
using PangoLayoutLinePtr = std::unique_ptr<PangoLayoutLine, ReleaseWith<pango_layout_line_unref>>;
using PangoLayoutIterPtr = std::unique_ptr<PangoLayoutIter, ReleaseWith<pango_layout_iter_free>>;

}  // namespace painting
