#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// What XML takes for blank.
inline constexpr std::string_view xmlBlanks = " \t\r\n";

/// Whether XML can carry the text: valid UTF-8 of characters that XML allows (no control
/// characters but tab and the line breaks).
bool canStandInXml(std::string_view text);

/// Where the first '&' stands that begins no entity which the library knows; nullopt without one.
/// The text has no tags in it.
std::optional<std::size_t> unknownEntity(std::string_view text);
