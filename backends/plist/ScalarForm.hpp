#pragma once

#include "backends/plist/PlistNode.hpp"
#include "platform/foundation/PropertyValue.hpp"

// Integers and dates by way of the library's binary form of a single value. Its functions for them
// do not tell a negative integer from a large unsigned one and cut dates to 32 bits of seconds;
// its binary form has both in full.

/// Signed where that holds the number, else unsigned; nil if it does not fit in 64 bits.
PropertyValue integerOfNode(plist_t node);
PropertyValue dateOfNode(plist_t node);

PlistNode nodeOfInteger(std::int64_t value);
PlistNode nodeOfInteger(std::uint64_t value);
PlistNode nodeOfDate(PropertyValue::Date date);
