#pragma once

#include "backends/cairo/Handles.hpp"
#include "backends/cairo/PaintState.hpp"
#include "platform/uikit/Canvas.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace painting {

/// A cache of shaped lines of text: shaping costs several times as much as painting, and captions
/// keep returning to the same words.
///
///     const Line* line = lines.find(text, style);
///     if (!line) line = &lines.keep(text, style, shape(text, style));
///
/// Main thread.
class ShapedLines {
 public:
    /// Everything that determines a text's appearance.
    struct Style {
        UIFont font;
        double width;  ///< Points.
        NSTextAlignment alignment;
        double scale;   ///< Pixels a point.
        double across;  ///< Of the context's matrix; where it translates to is the same for all.
        double down;
        unsigned long targetOptions;
        bool operator==(const Style&) const = default;
    };
    struct Line {
        PangoLayoutLinePtr glyphs;
        double x = 0;  ///< From the left of the width, points.
        double ascent = 0;
        double descent = 0;
    };

    /// nullptr if it is not cached. Valid until the next call.
    const Line* find(std::string_view text, const Style& style) const;
    /// Caches the line, replacing the oldest one if the cache is full, unless its text is too long
    /// for a caption. Returns the line to paint, valid until the next call.
    const Line& keep(std::string_view text, const Style& style, Line line);
    void clear();

 private:
    struct Entry {
        std::string text;
        Style style;
        Line line;
    };

    std::vector<Entry> entries_;
    std::size_t oldest_ = 0;
    Line unkept_;
};

/// Sets text in Cairo; kept over paints, since finding fonts is slow. Main thread.
class CairoText {
 public:
    CairoText();
    static CairoText& shared();

    /// The typeface of a font without a family, "Sans" at first.
    void setSansFamily(const std::string& family);
    /// The desktop's smoothing and hinting, copied; nullptr for those of the target.
    void setFontOptions(const cairo_font_options_t* options);

    /// Paints one line in the context's current colour. The baseline comes from the font's ascent
    /// and descent, so all lines in one font share it.
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

}  // namespace painting
