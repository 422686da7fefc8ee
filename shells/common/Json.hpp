#pragma once

#include "platform/foundation/PropertyValue.hpp"

#include <nlohmann/json.hpp>

#include <string>

namespace shell {

/// Keys stay in the order in which they were written.
using Json = nlohmann::ordered_json;

/// A number as its shortest text that reads back as the same number of its own precision: 0.376
/// for the single-precision 0.376, 320 for 320.0. What is no finite number is null.
Json jsonNumber(float number);
Json jsonNumber(double number);
/// nil is null.
Json jsonText(const NSString& text);
/// Containers with all they hold. Data is null: nothing that is reported holds any.
Json jsonValue(const PropertyValue& value);

/// One line, without its end. Bytes that are not UTF-8 come out as U+FFFD, and what acts on a
/// terminal is escaped.
std::string lineFrom(const Json& object);

}  // namespace shell
