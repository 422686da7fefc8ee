#pragma once

#include "backends/plist/PlistNode.hpp"
#include "platform/foundation/PropertyValue.hpp"

/// The library's tree of a value; null for what has no XML form: nil, a text that is not valid
/// UTF-8 or holds control characters, a date outside the years 1000 to 9999, nesting deeper than
/// NSPropertyList::maximumDepth.
PlistNode nodeOfValue(const PropertyValue& value);
