#include "platform/foundation/NSString.hpp"

#include <algorithm>
#include <charconv>
#include <limits>

namespace {

enum class Sign { Plus, Minus };

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view withoutBlanks(std::string_view text) {
    const auto start = text.find_first_not_of(" \t\n\v\f\r");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

/// Takes an optional sign off the front.
Sign takeSign(std::string_view& text) {
    if (text.empty() || (text.front() != '+' && text.front() != '-')) return Sign::Plus;
    const Sign sign = text.front() == '-' ? Sign::Minus : Sign::Plus;
    text.remove_prefix(1);
    return sign;
}

std::size_t digitsFrom(std::string_view text, std::size_t start) {
    const auto end = std::find_if_not(text.begin() + start, text.end(), isDigit);
    return static_cast<std::size_t>(end - text.begin()) - start;
}

/// The parts of a decimal number without its sign.
struct Decimal {
    std::string_view all;       ///< Empty when the text begins with no number.
    std::string_view integer;   ///< The digits before the point.
    std::string_view fraction;  ///< The digits behind it.
    std::string_view exponent;  ///< Without the E; may have a sign.
};

Decimal decimalAtFront(std::string_view text) {
    Decimal parts;
    parts.integer = text.substr(0, digitsFrom(text, 0));
    std::size_t end = parts.integer.size();
    if (end < text.size() && text[end] == '.') {
        parts.fraction = text.substr(end + 1, digitsFrom(text, end + 1));
        end += 1 + parts.fraction.size();
    }
    if (parts.integer.empty() && parts.fraction.empty()) return {};
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        std::size_t start = end + 1;
        if (start < text.size() && (text[start] == '+' || text[start] == '-')) ++start;
        if (const std::size_t digits = digitsFrom(text, start)) {
            parts.exponent = text.substr(end + 1, start - end - 1 + digits);
            end = start + digits;
        }
    }
    parts.all = text.substr(0, end);
    return parts;
}

/// Whether a number that fits no float is too large rather than too small: whether its first
/// digit other than 0 stands before the decimal point once the exponent has moved that.
bool isTooLarge(const Decimal& number) {
    constexpr long long farAway = std::numeric_limits<long long>::max() / 2;
    std::string_view exponentText = number.exponent;
    const Sign sign = takeSign(exponentText);
    long long exponent = 0;
    const auto result =
        std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    if (result.ec == std::errc::result_out_of_range || exponent > farAway) exponent = farAway;
    if (sign == Sign::Minus) exponent = -exponent;

    const auto leading = number.integer.find_first_not_of('0');
    if (leading != std::string_view::npos) {
        return exponent + static_cast<long long>(number.integer.size() - leading) > 0;
    }
    const auto zeros = number.fraction.find_first_not_of('0');
    return zeros != std::string_view::npos && exponent > static_cast<long long>(zeros);
}

}  // namespace

bool boolValueOfText(std::string_view text) {
    text = withoutBlanks(text);
    takeSign(text);
    const auto start = text.find_first_not_of('0');
    return start != std::string_view::npos &&
           std::string_view("YyTt123456789").find(text[start]) != std::string_view::npos;
}

NSInteger integerValueOfText(std::string_view text) {
    using Limits = std::numeric_limits<NSInteger>;
    text = withoutBlanks(text);
    const Sign sign = takeSign(text);
    // Read without its sign, the lowest integer is one out of range, so clamping is right for it.
    NSInteger magnitude = 0;
    if (text.empty() || !isDigit(text.front())) return 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    if (result.ec == std::errc::result_out_of_range) {
        return sign == Sign::Minus ? Limits::min() : Limits::max();
    }
    return sign == Sign::Minus ? -magnitude : magnitude;
}

float floatValueOfText(std::string_view text) {
    text = withoutBlanks(text);
    const Sign sign = takeSign(text);
    const Decimal number = decimalAtFront(text);
    float value = 0;
    const auto result =
        std::from_chars(number.all.data(), number.all.data() + number.all.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        value = isTooLarge(number) ? std::numeric_limits<float>::infinity() : 0.0F;
    }
    return sign == Sign::Minus ? -value : value;
}
