#include "shells/headless/Words.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace headless {
namespace {

constexpr std::string_view blanks = " \t\r";
constexpr char mark = '"';
constexpr double greatestParentWidth = 100'000;  // Points.

bool isBlank(char c) {
    return blanks.find(c) != std::string_view::npos;
}

/// Removes a quoted word from the front of `rest`; false if the closing mark is missing.
bool takeQuoted(std::string_view& rest, std::string& text) {
    rest.remove_prefix(1);
    while (!rest.empty()) {
        const std::size_t end = rest.find(mark);
        if (end == std::string_view::npos) return false;
        text.append(rest.substr(0, end));
        rest.remove_prefix(end + 1);
        if (!rest.starts_with(mark)) return true;
        text.push_back(mark);
        rest.remove_prefix(1);
    }
    return false;
}

}  // namespace

Result<std::vector<Word>> splitWords(std::string_view line) {
    if (line.find('\0') != std::string_view::npos) return Failure{"a line cannot hold a null byte"};
    std::vector<Word> words;
    std::string_view rest = line;
    for (;;) {
        rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
        if (rest.empty()) return words;

        Word& word = words.emplace_back();
        if (rest.front() == mark) {
            word.quoted = true;
            if (!takeQuoted(rest, word.text)) return Failure{"a quotation mark is not closed"};
            if (!rest.empty() && !isBlank(rest.front()))
                return Failure{"a blank is missing after a quoted word"};
        } else {
            word.text = rest.substr(0, rest.find_first_of(blanks));
            if (word.text.find(mark) != std::string::npos)
                return Failure{"a quotation mark inside a word"};
            rest.remove_prefix(word.text.size());
        }
    }
}

std::optional<double> numberFrom(const Word& word) {
    const char* const end = word.text.data() + word.text.size();
    double number = 0;
    const auto [stop, error] = std::from_chars(word.text.data(), end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number)) return std::nullopt;
    return number;
}

std::optional<double> parentWidthFrom(const Word& word) {
    const auto width = numberFrom(word);
    return width && *width >= 0 && *width <= greatestParentWidth ? width : std::nullopt;
}

std::optional<YesNo> yesNoFrom(const Word& word) {
    if (word.isBare("yes")) return YesNo::Yes;
    if (word.isBare("no")) return YesNo::No;
    return std::nullopt;
}

}  // namespace headless
