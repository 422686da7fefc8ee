#pragma once

#include <cstddef>
#include <cstdint>

// What bounds the time and memory that a list costs, hostile or not. The largest honest list, a
// file of NSPropertyList::maximumFileBytes full of categories, stays below all of them.

/// Values in the tree that the library builds, keys too. An object of the binary form that is
/// referred to twice counts twice.
inline constexpr std::uint64_t maximumValues = 1'000'000;
/// Bytes of texts and data in that tree, where the form lets a file stand for more than it holds.
inline constexpr std::uint64_t maximumExpandedBytes = std::uint64_t{32} * 1024 * 1024;
/// Entries of one dictionary: the library looks through all of them for each one that it adds.
inline constexpr std::uint64_t maximumDictionaryEntries = 10'000;
/// Entities in a text times the bytes of that text, of all texts together: what the library moves
/// to replace them.
inline constexpr std::size_t maximumEntityBytes = 4'000'000'000;
