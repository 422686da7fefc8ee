#include "shells/headless/LineReader.hpp"

#include <utility>

namespace headless {

void LineReader::append(std::string_view bytes) {
    for (;;) {
        const std::size_t end = bytes.find('\n');
        grow(bytes.substr(0, end));
        if (end == std::string_view::npos) return;
        finishLine();
        bytes.remove_prefix(end + 1);
    }
}

void LineReader::endOfInput() {
    if (current_ != InputLine{}) finishLine();
}

std::optional<InputLine> LineReader::next() {
    if (lines_.empty()) return std::nullopt;
    InputLine line = std::move(lines_.front());
    lines_.pop_front();
    return line;
}

void LineReader::grow(std::string_view bytes) {
    if (current_.fit == LineFit::TooLong) return;
    if (current_.text.size() + bytes.size() > maximumLineBytes)
        current_ = {"", LineFit::TooLong};
    else
        current_.text.append(bytes);
}

void LineReader::finishLine() {
    lines_.push_back(std::exchange(current_, {}));
}

}  // namespace headless
