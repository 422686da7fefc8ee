#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The first `characters` of a text of any bytes as printableLine() has it. A text with more
/// characters ends with an ellipsis. The time it takes depends on `characters`, not on the text's
/// length.
std::string displayableLine(std::string_view text, std::size_t characters);
