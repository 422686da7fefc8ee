#pragma once

#include "shells/headless/Words.hpp"

#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace headless {

enum class LineFit { Fits, TooLong };

/// One line of input without its end; without any text when it was too long.
struct InputLine {
    std::string text;
    LineFit fit = LineFit::Fits;
    bool operator==(const InputLine&) const = default;
};

/// Makes lines of the bytes that come in, in whatever pieces they come. Keeps no more of a line
/// than its greatest length.
class LineReader {
 public:
    void append(std::string_view bytes);
    /// What stands after the last line end counts as a line from now on.
    void endOfInput();
    /// The next whole line; nullopt when more bytes are needed.
    std::optional<InputLine> next();

 private:
    void grow(std::string_view bytes);
    void finishLine();

    InputLine current_;
    std::deque<InputLine> lines_;
};

}  // namespace headless
