#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The first `characters` of a text of any bytes as one line of valid UTF-8: what is not UTF-8 is
/// replaced, control characters and line separators are blanks. A text with more characters ends
/// with an ellipsis. The time it takes depends on `characters`, not on the text's length.
std::string displayableLine(std::string_view text, std::size_t characters);
