#pragma once

#include "platform/foundation/PropertyValue.hpp"

#include <nlohmann/json.hpp>

#include <string>

namespace shell {

/// Keys stay in the order in which they were written.
using Json = nlohmann::ordered_json;

/// A number as the shortest text that reads back as the same number in its own precision: 0.376 for
/// the single-precision 0.376, 320 for 320.0. Infinity and NaN are null.
Json jsonNumber(float number);
Json jsonNumber(double number);
/// nil is null.
Json jsonText(const NSString& text);
/// Converts containers recursively. Data is null, since reports contain none.
Json jsonValue(const PropertyValue& value);

/// One line without a line end. Invalid UTF-8 becomes U+FFFD, and characters that a terminal would
/// obey are escaped.
std::string lineFrom(const Json& object);

}  // namespace shell
