#pragma once

#include <cstddef>
#include <string_view>

/// Entities in one text times the bytes of that text: what the library moves to replace them.
inline constexpr std::size_t maximumEntityBytes = 4'000'000'000;

/// Whether the library can be given this XML: the tags of a property list, properly nested and at
/// most NSPropertyList::maximumDepth deep, in a form that leaves no two readings of where comments
/// and tags end. Refused are zero bytes, a document type with declarations of its own, and unpaired
/// double quotes inside a tag. The values themselves are left to the library.
bool isReadableXml(std::string_view text);
