#pragma once

#include <cstdint>
#include <string_view>

/// Values in the tree that the library builds. An object that is referred to twice counts twice.
inline constexpr std::uint64_t maximumExpandedValues = 200'000;
/// Bytes of texts and data in that tree.
inline constexpr std::uint64_t maximumExpandedBytes = std::uint64_t{8} * 1024 * 1024;

/// Whether the library can be given this binary property list: its objects lie inside the file,
/// none holds itself, at most NSPropertyList::maximumDepth containers lie in each other, and the
/// tree that comes of it stays within the limits above. (A list of a few hundred bytes can stand
/// for a tree of any size.)
bool isReadableBinary(std::string_view file);
