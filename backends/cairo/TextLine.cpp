#include "backends/cairo/TextLine.hpp"

#include <glib.h>

#include <algorithm>
#include <memory>

namespace {

constexpr std::size_t longestCharacter = 4;  // bytes in UTF-8

bool breaksLine(gunichar character) {
    const bool control = character < 0x20 || (character >= 0x7f && character < 0xa0);
    return control || character == 0x2028 || character == 0x2029;
}

// A null byte would be replaced as invalid though it is a control character like the others.
std::string withoutNulls(std::string_view text) {
    std::string copy(text);
    std::ranges::replace(copy, '\0', ' ');
    return copy;
}

}  // namespace

std::string displayableLine(std::string_view text, std::size_t characters) {
    const std::string head = withoutNulls(text.substr(0, characters * longestCharacter));
    const std::unique_ptr<char, decltype(&g_free)> valid(
        g_utf8_make_valid(head.data(), gssize(head.size())), g_free);

    std::string line;
    const char* at = valid.get();
    for (std::size_t count = 0; *at != '\0' && count < characters; ++count) {
        const char* next = g_utf8_next_char(at);
        if (breaksLine(g_utf8_get_char(at))) {
            line += ' ';
        } else {
            line.append(at, next);
        }
        at = next;
    }
    if (*at != '\0' || head.size() < text.size()) line += "…";
    return line;
}
