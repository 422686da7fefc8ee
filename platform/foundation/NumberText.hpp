#pragma once

#include "platform/foundation/NSString.hpp"

#include <string_view>

// How a text reads as a boolean or a number, in every locale alike; see PropertyValue for the
// rules.
bool boolValueOfText(std::string_view text);
NSInteger integerValueOfText(std::string_view text);
/// Infinite for a number too large for a float, 0 for one too small.
float floatValueOfText(std::string_view text);
