#pragma once

#include "shells/headless/Session.hpp"
#include "shells/headless/Words.hpp"

#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace headless {

enum class LineFit { Fits, TooLong };

/// One line of input without its end; empty text if it was too long.
struct InputLine {
    std::string text;
    LineFit fit = LineFit::Fits;
    bool operator==(const InputLine&) const = default;
};

/// Splits incoming bytes into lines, in whatever pieces they arrive. Keeps no more of a line than
/// the maximum length.
class LineReader {
 public:
    void append(std::string_view bytes);
    /// The text after the last line end counts as a line from now on.
    void endOfInput();
    /// The next complete line; nullopt if more bytes are needed.
    std::optional<InputLine> next();

 private:
    void grow(std::string_view bytes);
    void finishLine();

    InputLine current_;
    std::deque<InputLine> lines_;
};

enum class LoopEnd { Finished, InputFailed, OutputFailed };

/// Whether the lines written so far have reached the reader.
using OutputState = std::function<bool()>;

/// Passes the lines of a file descriptor to the session until its end or "quit". With the real
/// clock, timers and animations run while it waits.
LoopEnd runInputLoop(Session& session, int input, const OutputState& outputIsGood);

}  // namespace headless
