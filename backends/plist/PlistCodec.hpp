#pragma once

#include "platform/foundation/NSPropertyList.hpp"

/// Property lists on libplist: reads XML and binary, writes XML with the keys of a dictionary in
/// their order. What has no place in a PropertyValue (a UID, a null) reads as nil in an array and
/// is left out of a dictionary. Texts are taken as they are, valid UTF-8 or not; only valid UTF-8
/// without control characters can be written.
///
/// The library expands shared objects, follows nesting by recursion, and copies the rest of a text
/// for every entity in it, so the shape of the bytes is checked before it sees them. That bounds
/// time and memory for hostile bytes, and for honest ones only what no settings file has: see
/// Limits.hpp, XmlShape.hpp and BinaryShape.hpp.
class PlistCodec : public NSPropertyListCodec {
 public:
    DecodedPropertyList decode(std::string_view bytes) const override;
    std::vector<TextPlace> placesOf(std::string_view bytes,
                                    std::span<const PropertyListPath> paths) const override;
    std::optional<std::string> encode(const PropertyValue& value) const override;
};
