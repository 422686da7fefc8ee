#pragma once

#include <pango/pangocairo.h>

/// Captions with the size and position of the mixer's. Points.
namespace bare {

inline constexpr int rows = 5;
inline constexpr int rowHeight = 50;
inline constexpr int captionX = 20;
inline constexpr int captionY = 15;  ///< Of the first row.

inline void setCaption(PangoLayout* layout, const char* text) {
    constexpr int size = 12;
    PangoFontDescription* font = pango_font_description_from_string("Sans");
    pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
    pango_layout_set_font_description(layout, font);
    pango_font_description_free(font);
    pango_layout_set_text(layout, text, -1);
}

}  // namespace bare
