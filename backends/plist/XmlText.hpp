#pragma once

#include "platform/foundation/PropertyValue.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// How the contents of an XML property list's elements read and are written, in every locale alike.

/// The white space of XML.
inline constexpr std::string_view xmlBlanks = " \t\r\n";

std::string_view withoutLeadingBlanks(std::string_view text);

/// Whether XML can carry the text: valid UTF-8 of characters that XML allows (no control
/// characters but tab and the line breaks).
bool canStandInXml(std::string_view text);

/// Appends what the text stands for. Returns the position of the first '&' that begins no known
/// entity, where it stops; nullopt if all are known.
std::optional<std::size_t> appendUnescaped(std::string& result, std::string_view text);
std::string escaped(std::string_view text);

/// Decimal, hexadecimal ("0x1F") or octal ("017"); 0 for a text without a number. Numbers that
/// don't fit in 64 bits give the nearest limit.
PropertyValue integerOfText(std::string_view text);
/// Decimal, "nan" or "infinity"; 0 for a text without a number.
double realOfText(std::string_view text);
std::string textOfReal(double value);

/// "2001-01-01T00:00:00Z"; 1 January 1970 for a text that is no date of that form.
PropertyValue::Date dateOfText(std::string_view text);
/// Without fractions of a second; nullopt for a year that has not four digits.
std::optional<std::string> textOfDate(PropertyValue::Date date);

/// Base64. Characters outside its alphabet and an unfinished last group are passed over.
PropertyValue::Data dataOfText(std::string_view text);
/// One line, padded to whole groups.
std::string textOfData(const std::byte* data, std::size_t size);
