#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Texts come from command lines, files and servers and may contain any bytes. On the way to a
// terminal, a log, a caption or another program, these functions replace everything that would be
// obeyed there instead of shown. Inside the process, texts stay unchanged.

/// Whether a character is not printable: a control character (C0, DEL, C1), a line or paragraph
/// separator, or a direction override, embedding or isolate. Marks and joiners, which Arabic,
/// Hebrew and emoji need, are printable.
bool isUnprintable(char32_t character);

/// The text as one line of valid UTF-8 without unprintable characters. What ends a line and tabs
/// are blanks (two for a carriage return and a line feed); any other unprintable character, and
/// every byte that is not UTF-8, is U+FFFD.
std::string printableLine(std::string_view text);

/// A JSON text in valid UTF-8 that says the same, with unprintable characters escaped (\u202e).
std::string escapedJson(std::string_view json);

/// The character at the front of a text that isn't empty, and its bytes; U+FFFD and 1 for a byte
/// that is not UTF-8.
struct DecodedCharacter {
    char32_t code;
    std::size_t bytes;
};
DecodedCharacter firstCharacter(std::string_view text);

/// Appends a character up to U+10FFFF in UTF-8; a surrogate too, as three bytes that are not valid.
void appendUtf8(std::string& text, char32_t character);
