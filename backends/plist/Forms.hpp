#pragma once

#include "platform/foundation/NSPropertyList.hpp"

#include <functional>
#include <string>

// The forms of a property list. Besides the limits of NSPropertyList on size and depth, the limits
// here bound the time and memory that a file, hostile or not, can cost. A file of
// NSPropertyList::maximumFileBytes full of categories stays below all of them.

/// Values in the tree, including keys. An object of the binary form that is referenced twice counts
/// twice, because whoever walks or writes the tree meets it twice.
inline constexpr std::uint64_t maximumValues = 1'000'000;
/// Bytes of strings and data in the tree, which can exceed those of a binary file.
inline constexpr std::uint64_t maximumExpandedBytes = std::uint64_t{32} * 1024 * 1024;
/// Entries of one dictionary: looking up a key goes through all of them.
inline constexpr std::uint64_t maximumDictionaryEntries = 10'000;

/// Refuses objects that don't lie whole inside the file, that contain themselves, that are strings
/// with a zero character or keys but no strings, and what exceeds the limits. A fault has no place;
/// its reason names the object. `isWhole` receives whether the tree holds all that the file does:
/// no PropertyValue stands for a UID, an integer of more than 64 bits or half a character.
DecodedPropertyList readBinaryPropertyList(std::string_view file, bool* isWhole = nullptr);

/// nullopt for what has no binary form that reads as the same: nil, a string with a zero character,
/// and what exceeds the reader's limits on depth and entries.
std::optional<std::string> writeBinaryPropertyList(const PropertyValue& value);

/// Where a value stands in a text, in bytes.
struct XmlPlace {
    std::size_t entry = 0;  ///< Where its key begins, in a dictionary; else as `begin`.
    std::size_t begin = 0;
    std::size_t end = 0;  ///< Behind its last byte; 0 while it has only begun.
};

/// Called for each value with its path from the root, when it begins and again when it ends.
using XmlValueListener = std::function<void(const PropertyListPath& path, const XmlPlace& place)>;

/// Takes the tags of a property list, properly nested, in or without a <plist>, with a key for each
/// value of a dictionary. Refuses zero bytes, a document type with declarations of its own, unknown
/// entities, attributes, unpaired double quotes in a tag, and what exceeds the limits. Numbers,
/// dates and data are read as far as they go: see XmlText.hpp. A fault has its place.
DecodedPropertyList readXmlPropertyList(std::string_view text,
                                        const XmlValueListener& listener = {});

/// nullopt for what has no XML form: nil, a string that is not valid UTF-8 or holds control
/// characters, a date outside the years 1000 to 9999, nesting beyond NSPropertyList::maximumDepth.
std::optional<std::string> writeXmlPropertyList(const PropertyValue& value);

/// How values are laid out on lines. Without a line end and a unit they stand on a single line.
struct XmlLayout {
    std::string lineEnd = "\n";
    std::string indent = {};  ///< Of the value's own line.
    std::string unit = "\t";  ///< What each container adds to that.
};

/// The text of one value inside a property list, without the indentation before it and the line end
/// behind it; nullopt as for a whole list.
std::optional<std::string> writeXmlValue(const PropertyValue& value, const XmlLayout& layout);

/// The line and column of a byte in a text.
TextPlace placeInText(std::string_view text, std::size_t offset);
