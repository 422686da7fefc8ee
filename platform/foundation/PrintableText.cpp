#include "platform/foundation/PrintableText.hpp"

#include <array>

namespace {

constexpr std::string_view replacement = "\uFFFD";
constexpr char32_t replacementCode = 0xFFFD;
constexpr char32_t lastCharacter = 0x10FFFF;
constexpr unsigned continuationBits = 6;
constexpr unsigned continuationMask = 0x3F;

constexpr bool isBetween(char32_t character, char32_t first, char32_t last) {
    return character >= first && character <= last;
}

/// How sequences of a length begin, and from which character on they are the shortest ones.
struct Form {
    unsigned leadMask;
    unsigned lead;
    char32_t first;
};
constexpr std::array<Form, 4> forms = {{
    {0x80, 0x00, 0x0},
    {0xE0, 0xC0, 0x80},
    {0xF0, 0xE0, 0x800},
    {0xF8, 0xF0, 0x10000},
}};

unsigned byteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

/// Reads the text's front as a sequence of that many bytes, which its first byte announces.
DecodedCharacter decoded(std::string_view text, std::size_t bytes) {
    constexpr DecodedCharacter invalid{replacementCode, 1};
    if (text.size() < bytes) return invalid;
    const Form& form = forms[bytes - 1];
    char32_t code = byteAt(text, 0) & ~form.leadMask;
    for (std::size_t i = 1; i < bytes; ++i) {
        if ((byteAt(text, i) & ~continuationMask) != 0x80) return invalid;
        code = (code << continuationBits) | (byteAt(text, i) & continuationMask);
    }
    const bool isSurrogate = isBetween(code, 0xD800, 0xDFFF);
    if (code < form.first || code > lastCharacter || isSurrogate) return invalid;
    return {code, bytes};
}

bool isBlank(char32_t character) {
    return isBetween(character, 0x2028, 0x2029) || character == '\t' || character == '\n' ||
           character == '\r' || character == 0x85;
}

}  // namespace

DecodedCharacter firstCharacter(std::string_view text) {
    for (std::size_t bytes = 1; bytes <= forms.size(); ++bytes)
        if ((byteAt(text, 0) & forms[bytes - 1].leadMask) == forms[bytes - 1].lead)
            return decoded(text, bytes);
    return {replacementCode, 1};
}

bool isUnprintable(char32_t character) {
    return character < ' ' || isBetween(character, 0x7F, 0x9F) ||
           isBetween(character, 0x2028, 0x202E) || isBetween(character, 0x2066, 0x2069);
}

std::string printableLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    while (!text.empty()) {
        const DecodedCharacter character = firstCharacter(text);
        if (isBlank(character.code))
            line += ' ';
        else if (isUnprintable(character.code) || character.code == replacementCode)
            line += replacement;
        else
            line += text.substr(0, character.bytes);
        text.remove_prefix(character.bytes);
    }
    return line;
}

std::string escapedJson(std::string_view json) {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr unsigned digitBits = 4;
    std::string escaped;
    escaped.reserve(json.size());
    while (!json.empty()) {
        const auto [code, bytes] = firstCharacter(json);
        if (isUnprintable(code)) {
            escaped += "\\u";
            for (unsigned shift = 16; shift > 0; shift -= digitBits)
                escaped += digits[(code >> (shift - digitBits)) & 0xF];
        } else {
            escaped += json.substr(0, bytes);
        }
        json.remove_prefix(bytes);
    }
    return escaped;
}

void appendUtf8(std::string& text, char32_t character) {
    std::size_t bytes = 1;
    while (bytes < forms.size() && character >= forms[bytes].first)
        ++bytes;
    const unsigned bitsBehind = continuationBits * static_cast<unsigned>(bytes - 1);
    text += static_cast<char>(forms[bytes - 1].lead | character >> bitsBehind);
    for (unsigned shift = bitsBehind; shift > 0;) {
        shift -= continuationBits;
        text += static_cast<char>(0x80 | (character >> shift & continuationMask));
    }
}
