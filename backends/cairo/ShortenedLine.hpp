#pragma once

#include <pango/pango.h>

#include <cstddef>
#include <string>
#include <string_view>

/// A line of text whose end says more than its middle, as a caption's does: "NAME (REMARK): VALUE",
/// the remark and the value being optional. Valid UTF-8; places in it are in bytes.
struct CaptionLine {
    std::string text;
    std::size_t nameEnd = 0;   ///< What comes before it gives way first;
    std::size_t titleEnd = 0;  ///< then what comes before this. 0 where nothing needs to stay.

    /// Without the blank and the colon before it; empty for none.
    std::string_view value() const;
};

/// The line in the form of displayableLine(). Of more than `characters` the name's middle is left
/// out, or the end where there is no value and no remark.
CaptionLine captionLine(std::string_view text, std::size_t characters);

/// Puts the line into the layout, a single paragraph with an ellipsis at its end. Where it is wider
/// than `width` (units of the library), an ellipsis takes the place of the name's middle; where too
/// little would be left of that, of the remark's, then of the middle of all before the value; then
/// the value stands alone.
void setCaption(PangoLayout* layout, const CaptionLine& line, int width);
