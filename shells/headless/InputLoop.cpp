#include "shells/headless/InputLoop.hpp"

#include "shells/headless/LineReader.hpp"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>

namespace headless {
namespace {

constexpr double millisecondsPerSecond = 1000;
constexpr double longestWait = 3600;  // Seconds; poll() takes an int of milliseconds.

int pollTimeout(const Timeline& timeline) {
    const auto seconds = timeline.timeUntilDue();
    if (!seconds) return -1;
    return static_cast<int>(std::ceil(std::min(*seconds, longestWait) * millisecondsPerSecond));
}

enum class Readiness { Ready, Waited, Failed };

Readiness waitForInput(const Timeline& timeline, int input) {
    pollfd watched{.fd = input, .events = POLLIN, .revents = 0};
    const int count = poll(&watched, 1, pollTimeout(timeline));
    if (count < 0) return errno == EINTR ? Readiness::Waited : Readiness::Failed;
    return count == 0 ? Readiness::Waited : Readiness::Ready;
}

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

LoopEnd runInputLoop(Session& session, int input, const OutputState& outputIsGood) {
    LineReader lines;
    char bytes[65536];
    while (!session.hasQuit() && outputIsGood()) {
        const Readiness readiness = waitForInput(session.timeline(), input);
        if (readiness == Readiness::Failed) return LoopEnd::InputFailed;
        session.runDueCalls();
        if (readiness == Readiness::Waited) continue;

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
    return outputIsGood() ? LoopEnd::Finished : LoopEnd::OutputFailed;
}

}  // namespace headless
