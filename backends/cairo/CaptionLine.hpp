#pragma once

#include <pango/pango.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace painting {

/// The first `characters` characters of a text of any bytes, in the form of printableLine(). A text
/// with more characters ends with an ellipsis. Takes time in proportion to `characters`, however
/// long the text is.
std::string displayableLine(std::string_view text, std::size_t characters);

/// A line of text whose end says more than its middle, as a caption's does: "NAME (REMARK): VALUE",
/// where remark and value may be missing. Valid UTF-8; offsets are in bytes.
struct CaptionLine {
    std::string text;
    std::size_t nameEnd = 0;   ///< The name ends here: it is shortened first.
    std::size_t titleEnd = 0;  ///< Name and remark end here. 0 where the end of the text may go.

    /// Without the colon and the blank before it; empty where there is none.
    std::string_view value() const;
};

/// Splits a text into name, remark and value, in the form of displayableLine(). Of a text with more
/// than `characters` the middle of the name is left out, or the end where it has neither remark nor
/// value.
CaptionLine captionLine(std::string_view text, std::size_t characters);

/// Puts the line into the layout, which is a single paragraph with an ellipsis at its end. A line
/// wider than `width` (Pango units) is shortened by an ellipsis in the middle of the name. Where
/// too little of the name would be left, the remark is shortened instead, then all before the
/// value; where even that does not fit, the value stands alone.
void setCaption(PangoLayout* layout, const CaptionLine& line, int width);

}  // namespace painting
