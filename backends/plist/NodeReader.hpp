#pragma once

#include "backends/plist/PlistNode.hpp"
#include "platform/foundation/PropertyValue.hpp"

#include <optional>

/// The value of a node and all below it; nullopt when it is nested deeper than
/// NSPropertyList::maximumDepth.
std::optional<PropertyValue> valueOfNode(plist_t node);
