#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Text in UTF-8, or nil. Texts come from files and servers, so the bytes are not always valid
/// UTF-8; whoever draws a text makes it valid first.
using NSString = std::optional<std::string>;

/// A signed integer of the pointer's width.
using NSInteger = std::intptr_t;

/// The text as formatted output shows it: a missing one is "(null)".
inline const std::string& describe(const NSString& text) {
    static const std::string missing = "(null)";
    return text ? *text : missing;
}

/// nil has no prefix.
inline bool hasPrefix(const NSString& text, const char* prefix) {
    return text && text->starts_with(prefix);
}

// How a text reads as a boolean or a number, in every locale alike; see PropertyValue for the
// rules.
bool boolValueOfText(std::string_view text);
NSInteger integerValueOfText(std::string_view text);
/// Infinite for a number too large for a float, 0 for one too small.
float floatValueOfText(std::string_view text);
