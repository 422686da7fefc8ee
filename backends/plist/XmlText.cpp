#include "backends/plist/XmlText.hpp"

#include "platform/foundation/PrintableText.hpp"

#include <locale.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

namespace chrono = std::chrono;
constexpr double referenceDate = 978307200;  // 1 January 2001, in seconds since 1970.

constexpr std::array<std::pair<std::string_view, char>, 5> namedEntities = {
    {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};

/// The character of a numeric entity, from what stands between "&#" and ";"; 0 if there is none.
char32_t characterOfNumber(std::string_view digits) {
    const bool isHexadecimal = digits.starts_with('x') || digits.starts_with('X');
    if (isHexadecimal) digits.remove_prefix(1);
    std::uint32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number, isHexadecimal ? 16 : 10);
    return error == std::errc() && stop == end && number <= 0x10FFFF ? number : 0;
}

/// Of the text between "&" and ";"; 0 for an unknown entity.
char32_t characterOfEntity(std::string_view name) {
    if (name.starts_with('#')) return characterOfNumber(name.substr(1));
    for (const auto& [known, character] : namedEntities)
        if (name == known) return static_cast<char32_t>(character);
    return 0;
}

constexpr std::string_view base64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string_view withoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(xmlBlanks), text.size()));
}

bool canStandInXml(std::string_view text) {
    while (!text.empty()) {
        const auto [code, bytes] = firstCharacter(text);
        const bool isInvalid = code == 0xFFFD && bytes == 1;
        const bool isControl = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
        if (isInvalid || isControl || code == 0xFFFE || code == 0xFFFF) return false;
        text.remove_prefix(bytes);
    }
    return true;
}

std::optional<std::size_t> appendUnescaped(std::string& result, std::string_view text) {
    for (std::size_t at = 0;;) {
        const auto start = std::min(text.find('&', at), text.size());
        result += text.substr(at, start - at);
        if (start == text.size()) return std::nullopt;
        constexpr std::size_t longest = 64;  // Entities that are longer begin with needless zeros.
        const auto length = text.substr(start + 1, longest).find(';');
        if (length == std::string_view::npos) return start;
        const char32_t character = characterOfEntity(text.substr(start + 1, length));
        if (character == 0) return start;
        appendUtf8(result, character);
        at = start + 1 + length + 1;
    }
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        if (character == '<')
            result += "&lt;";
        else if (character == '>')
            result += "&gt;";
        else if (character == '&')
            result += "&amp;";
        else
            result += character;
    }
    return result;
}

PropertyValue integerOfText(std::string_view text) {
    using Signed = std::numeric_limits<std::int64_t>;
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (isHexadecimal) text.remove_prefix(2);
    const int base = isHexadecimal ? 16 : text.starts_with('0') ? 8 : 10;
    std::uint64_t magnitude = 0;
    const auto [stop, error] =
        std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
    if (error == std::errc::result_out_of_range) magnitude = ~std::uint64_t{0};
    if (!std::in_range<std::int64_t>(magnitude))
        return isNegative ? PropertyValue(Signed::min()) : PropertyValue(magnitude);
    const auto number = static_cast<std::int64_t>(magnitude);
    return PropertyValue(isNegative ? -number : number);
}

double realOfText(std::string_view text) {
    // The user's locale may have a decimal comma.
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(std::string(text).c_str(), nullptr, locale);
}

std::string textOfReal(double value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0 ? "+infinity" : "-infinity";
    if (value == 0) return "0.0";
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.begin(), text.end(), value, std::chars_format::general,
                                   std::numeric_limits<double>::max_digits10);
    return {text.begin(), end.ptr};
}

PropertyValue::Date dateOfText(std::string_view text) {
    constexpr PropertyValue::Date unreadable{-referenceDate};
    std::array<int, 6> numbers{};  // Year, month, day, hour, minute, second.
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto [stop, error] = std::from_chars(at, end, numbers[i]);
        const bool isNumber = error == std::errc() && numbers[i] >= 0 && numbers[i] <= 9999;
        if (!isNumber || stop == end || *stop != "--T::Z"[i]) return unreadable;
        at = stop + 1;
    }
    const auto [year, month, day, hour, minute, second] = numbers;
    const bool isDay = month <= 12 && day <= 31 && hour < 24 && minute < 60 && second <= 60;
    const chrono::year_month_day date{chrono::year(year), chrono::month(unsigned(month)),
                                      chrono::day(unsigned(day))};
    if (at != end || !isDay || !date.ok()) return unreadable;
    const auto time = chrono::sys_days(date) + chrono::hours(hour) + chrono::minutes(minute) +
                      chrono::seconds(second);
    return {static_cast<double>(time.time_since_epoch().count()) - referenceDate};
}

std::optional<std::string> textOfDate(PropertyValue::Date date) {
    constexpr double year1000 = -31588012800.0;  // Seconds since 1 January 2001.
    constexpr double year10000 = 252423993600.0;
    const double exact = date.secondsSinceReferenceDate;
    if (!(exact >= year1000 && exact < year10000)) return std::nullopt;
    const auto whole = static_cast<std::int64_t>(exact) + static_cast<std::int64_t>(referenceDate);
    const chrono::sys_seconds time{chrono::seconds(whole)};
    const auto midnight = chrono::floor<chrono::days>(time);
    const chrono::year_month_day day(midnight);
    const chrono::hh_mm_ss clock(time - midnight);
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", int(day.year()),
                  unsigned(day.month()), unsigned(day.day()), int(clock.hours().count()),
                  int(clock.minutes().count()), int(clock.seconds().count()));
    return text.data();
}

PropertyValue::Data dataOfText(std::string_view text) {
    PropertyValue::Data data;
    std::uint32_t group = 0;
    int digits = 0;
    int padding = 0;
    for (const char character : text) {
        const auto value = base64Digits.find(character);
        if (value == std::string_view::npos && character != '=') continue;
        padding += character == '=' ? 1 : 0;
        group = group << 6 | (character == '=' ? 0 : static_cast<std::uint32_t>(value));
        if (++digits % 4 != 0) continue;
        for (int byte = 0; byte < 3 - padding; ++byte)
            data.push_back(static_cast<std::byte>(group >> (16 - 8 * byte)));
        padding = 0;
    }
    return data;
}

std::string textOfData(const std::byte* data, std::size_t size) {
    std::string text;
    for (std::size_t at = 0; at < size; at += 3) {
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i)
            group = group << 8 | (at + i < size ? std::to_integer<std::uint32_t>(data[at + i]) : 0);
        for (std::size_t i = 0; i < 4; ++i)
            text += at + i <= size ? base64Digits[group >> (18 - 6 * i) & 0x3F] : '=';
    }
    return text;
}
