#pragma once

#include <cstdint>
#include <optional>
#include <string>

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
