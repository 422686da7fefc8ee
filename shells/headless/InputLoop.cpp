#include "shells/headless/InputLoop.hpp"

#include "shells/headless/LineReader.hpp"

#include <unistd.h>

#include <cerrno>

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
