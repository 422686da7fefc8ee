#pragma once

#include "platform/foundation/Result.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// The maximum length of a line, in bytes.
inline constexpr std::size_t maximumLineBytes = 1024 * 1024;

/// One word of a command line. A quoted word is always plain text: quoted, "-" is the name of a
/// category; unquoted, it stands for a missing one.
struct Word {
    std::string text;
    bool quoted = false;

    bool isBare(std::string_view name) const { return !quoted && text == name; }
    bool operator==(const Word&) const = default;
};

/// Splits a line at blanks (space, tab, carriage return). A word in quotation marks may contain
/// blanks, and a quotation mark as two. Fails if the quotation marks do not fit.
Result<std::vector<Word>> splitWords(std::string_view line);

enum class YesNo { No, Yes };

/// Reads a finite decimal number; nullopt for any other text.
std::optional<double> numberFrom(const Word& word);
/// The width of a parent's view: a number from 0 to 100000 points.
std::optional<double> parentWidthFrom(const Word& word);
std::optional<YesNo> yesNoFrom(const Word& word);

}  // namespace headless
