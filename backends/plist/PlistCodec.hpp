#pragma once

#include "platform/foundation/NSPropertyList.hpp"

/// Reads property lists in XML and binary form, and writes XML with dictionary keys in their order.
/// Values without a counterpart in PropertyValue (UIDs) read as nil in an array and are omitted
/// from a dictionary. Strings may be invalid UTF-8 when read; only valid UTF-8 without control
/// characters can be written.
///
///     NSPropertyList::setCodec(std::make_shared<PlistCodec>());
///
/// Time and memory are proportional to the input, hostile or not; see Forms.hpp.
class PlistCodec : public NSPropertyListCodec {
 public:
    DecodedPropertyList decode(std::string_view bytes) const override;
    std::vector<TextPlace> placesOf(std::string_view bytes,
                                    std::span<const PropertyListPath> paths) const override;
    std::optional<std::string> encode(const PropertyValue& value) const override;
};
