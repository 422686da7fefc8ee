#pragma once

#include "backends/cairo/Handles.hpp"
#include "platform/uikit/Canvas.hpp"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Lines of text that have been shaped, to be painted again. A caption comes back to the same few
/// words whenever its row is painted and a volume to the same hundred numbers, and shaping costs
/// several times what painting does. Main thread.
class ShapedLines {
 public:
    /// What makes a text look as it does.
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

    /// nullptr when it is not there; until the next call otherwise.
    const Line* find(std::string_view text, const Style& style) const;
    /// Keeps the line in the place of the one that has been kept longest, unless its text is too
    /// long to be a caption. Answers what is to be painted, until the next call.
    const Line& keep(std::string_view text, const Style& style, Line line);
    void clear();

 private:
    struct Entry {
        std::size_t hash;
        std::string text;
        Style style;
        Line line;
    };

    std::vector<Entry> entries_;
    std::size_t oldest_ = 0;
    Line unkept_;
};
