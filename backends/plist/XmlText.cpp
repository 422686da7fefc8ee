#include "backends/plist/XmlText.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace {

struct Sequence {
    std::size_t bytes;  ///< 0 for a byte that begins no character.
    char32_t least;     ///< Below this a shorter sequence would have done, which is not allowed.
    char32_t bits;      ///< What the first byte contributes.
};

Sequence sequenceStartedBy(unsigned char first) {
    if (first < 0x80) return {1, 0, first};
    if (first >> 5 == 0b110) return {2, 0x80, first & 0x1FU};
    if (first >> 4 == 0b1110) return {3, 0x800, first & 0x0FU};
    if (first >> 3 == 0b11110) return {4, 0x10000, first & 0x07U};
    return {0, 0, 0};
}

bool isAllowed(char32_t character) {
    if (character < 0x20) return character == '\t' || character == '\n' || character == '\r';
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    const bool isNoCharacter = character == 0xFFFE || character == 0xFFFF;
    return character <= 0x10FFFF && !isSurrogate && !isNoCharacter;
}

constexpr std::array<std::string_view, 5> namedEntities = {"amp", "lt", "gt", "quot", "apos"};

std::string_view withoutBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(xmlBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(xmlBlanks) - first + 1);
}

/// What stands between "&#" and ";".
bool isCharacterNumber(std::string_view digits) {
    digits = withoutBlanks(digits);
    const bool isHexadecimal = digits.starts_with('x') || digits.starts_with('X');
    if (isHexadecimal) digits.remove_prefix(1);
    std::uint32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number, isHexadecimal ? 16 : 10);
    return error == std::errc() && stop == end && number > 0 && number <= 0x10FFFF;
}

/// What stands between "&" and ";".
bool isEntity(std::string_view name) {
    if (name.starts_with('#')) return isCharacterNumber(name.substr(1));
    return std::ranges::find(namedEntities, withoutBlanks(name)) != namedEntities.end();
}

}  // namespace

bool canStandInXml(std::string_view text) {
    while (!text.empty()) {
        const Sequence sequence = sequenceStartedBy(static_cast<unsigned char>(text[0]));
        if (sequence.bytes == 0 || sequence.bytes > text.size()) return false;
        char32_t character = sequence.bits;
        for (std::size_t i = 1; i < sequence.bytes; ++i) {
            const auto byte = static_cast<unsigned char>(text[i]);
            if (byte >> 6 != 0b10) return false;
            character = character << 6 | (byte & 0x3FU);
        }
        if (character < sequence.least || !isAllowed(character)) return false;
        text.remove_prefix(sequence.bytes);
    }
    return true;
}

std::optional<std::size_t> unknownEntity(std::string_view text) {
    for (auto start = text.find('&'); start != std::string_view::npos;
         start = text.find('&', start + 1)) {
        const auto end = text.find(';', start);
        if (end == std::string_view::npos || !isEntity(text.substr(start + 1, end - start - 1)))
            return start;
    }
    return std::nullopt;
}
