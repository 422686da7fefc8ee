#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// Longer lines are refused, bytes.
inline constexpr std::size_t maximumLineBytes = 1024 * 1024;

/// One word of a command line. A quoted word is always a plain text: "-" in quotes is a category
/// of that name, without them a missing one.
struct Word {
    std::string text;
    bool quoted = false;

    bool isBare(std::string_view name) const { return !quoted && text == name; }
    bool operator==(const Word&) const = default;
};

/// The words of a line, or why it has none.
struct Words {
    std::vector<Word> words;
    std::string error;  ///< Empty when the line could be read.
};

/// Splits a line at its blanks (space, tab, carriage return). A word may stand in quotation marks,
/// with blanks in it and a doubled mark for a mark.
Words splitWords(std::string_view line);

enum class YesNo { No, Yes };

/// A finite decimal number and nothing else; nullopt for any other text.
std::optional<double> numberFrom(const Word& word);
/// The width of a parent's view: a number from 0 to 100000 points.
std::optional<double> parentWidthFrom(const Word& word);
std::optional<YesNo> yesNoFrom(const Word& word);

}  // namespace headless
