#pragma once

#include "backends/plist/Limits.hpp"
#include "platform/foundation/NSPropertyList.hpp"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Why the library is not given some XML, and the byte at which that shows.
struct XmlFault {
    std::size_t offset = 0;
    std::string reason;
};

/// Called for each value with its path from the root and the byte where it begins; of an entry of a
/// dictionary, where its key begins.
using XmlValueListener = std::function<void(const PropertyListPath& path, std::size_t offset)>;

/// Whether the library can be given this XML; nullopt if it can. It takes the tags of a property
/// list, properly nested and at most NSPropertyList::maximumDepth deep, with a key for each value
/// of a dictionary and known entities, in a form that leaves no two readings of where comments and
/// tags end. Refused are zero bytes, a document type with declarations of its own, unpaired double
/// quotes inside a tag, and what goes beyond the limits. The values themselves are left to the
/// library.
std::optional<XmlFault> faultInXml(std::string_view text, const XmlValueListener& listener = {});

/// Of a byte in a text.
TextPlace placeInText(std::string_view text, std::size_t offset);
