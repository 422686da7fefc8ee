#include "shells/headless/InputLoop.hpp"

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace headless {
namespace {

void carryOutLines(Session& session, LineReader& lines, const OutputState& outputIsGood) {
    while (!session.hasQuit() && outputIsGood()) {
        const auto line = lines.next();
        if (!line) return;
        if (line->fit == LineFit::TooLong)
            session.refuse("the line is longer than 1 MiB");
        else
            session.execute(line->text);
    }
}

}  // namespace

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

LoopEnd runInputLoop(Session& session, int input, const OutputState& outputIsGood) {
    LineReader lines;
    char bytes[65536];
    while (!session.hasQuit() && outputIsGood()) {
        const Waiter::Woken woken =
            session.device().waiter().wait(input, session.timeline().timeUntilDue());
        if (woken == Waiter::Woken::Failed) return LoopEnd::InputFailed;
        session.runDueCalls();
        if (woken == Waiter::Woken::Other) continue;

        const ssize_t count = read(input, bytes, sizeof bytes);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return LoopEnd::InputFailed;
        if (count == 0) {
            lines.endOfInput();
            carryOutLines(session, lines, outputIsGood);
            break;
        }
        lines.append({bytes, static_cast<std::size_t>(count)});
        carryOutLines(session, lines, outputIsGood);
    }
    session.finish();
    return outputIsGood() ? LoopEnd::Finished : LoopEnd::OutputFailed;
}

}  // namespace headless
