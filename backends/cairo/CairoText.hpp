#pragma once

#include "backends/cairo/Handles.hpp"
#include "backends/cairo/PixelGrid.hpp"
#include "backends/cairo/ShapedLines.hpp"
#include "platform/uikit/Canvas.hpp"

#include <optional>
#include <string>
#include <string_view>

/// What text is set with; kept over paints, since fonts are slow to find. Main thread.
class CairoText {
 public:
    CairoText();
    static CairoText& shared();

    /// The typeface of a font without a family, "Sans" at first.
    void setSansFamily(const std::string& family);
    /// The desktop's settings of smoothing and hinting, copied; nullptr for those of the target.
    void setFontOptions(const cairo_font_options_t* options);

    /// One line in the context's present colour, its baseline placed by the font's own ascent and
    /// descent, so that all lines in one font share it whatever they say.
    void draw(cairo_t* context, const PixelGrid& grid, std::string_view text, const UIFont& font,
              const CGRect& rect, NSTextAlignment alignment);

 private:
    /// What the layout is set up for, and the extents of that font in points.
    struct Face {
        UIFont font;
        double scale;
        double ascent;
        double descent;
    };

    ShapedLines::Line shaped(cairo_t* context, std::string_view text,
                             const ShapedLines::Style& style);
    const Face& useFace(cairo_t* context, const UIFont& font, double scale);
    void useScale(double scale);

    PangoContextPtr context_;
    PangoLayoutPtr layout_;
    CairoFontOptions options_;
    std::string sansFamily_ = "Sans";
    std::optional<Face> face_;
    ShapedLines lines_;
};
