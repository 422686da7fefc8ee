#include "shells/headless/Session.hpp"
#include "shells/headless/Waiter.hpp"

namespace headless {
namespace {

constexpr double greatestTime = 86'400'000;  // Milliseconds: a day.
constexpr std::size_t mostEntries = 16;      // Of an event; none has so many.

/// What a number of milliseconds comes to, or why it is refused.
struct Span {
    double seconds = 0;
    Failure failure;
};
std::optional<Span> spanFrom(const Word& word) {
    const auto milliseconds = numberFrom(word);
    if (!milliseconds) return std::nullopt;
    if (*milliseconds < 0 || *milliseconds > greatestTime)
        return Span{0, "the time must lie between 0 and 86400000 milliseconds"};
    return Span{*milliseconds / millisecondsPerSecond, std::nullopt};
}

std::optional<Answer> advance(Session& session, Arguments arguments) {
    const auto span = spanFrom(arguments[0]);
    if (!span) return std::nullopt;
    if (span->failure) return Answer::from(span->failure);
    return Answer::from(session.timeline().advance(span->seconds));
}

std::optional<Answer> wait(Session& session, Arguments arguments) {
    const auto span = spanFrom(arguments[0]);
    if (!span) return std::nullopt;
    if (span->failure) return Answer::from(span->failure);
    std::optional<Json> event;
    const auto isThere = [&] {
        if (!event) event = session.recentEvents().take(arguments.subspan(1));
        return event.has_value();
    };
    const Failure failure = session.timeline().advance(span->seconds, isThere);
    if (failure) return Answer::from(failure);
    return event ? Answer::result(*std::move(event)) : Answer::failed("there was no such event");
}

std::optional<Answer> ready(Session& session, Arguments arguments) {
    const auto span = spanFrom(arguments[0]);
    if (!span) return std::nullopt;
    if (span->failure) return Answer::from(span->failure);
    const auto isReady = [&] { return session.device().isReady(); };
    const Failure failure = session.timeline().advance(span->seconds, isReady);
    if (failure) return Answer::from(failure);
    return isReady() ? Answer::done() : Answer::failed("no sound server answers");
}

}  // namespace

std::span<const Command> timeCommands() {
    static constexpr Command commands[] = {
        {"advance", "MS", 1, 1, advance},
        {waitCommand, "MS EVENT [ENTRY ...]", 2, mostEntries, wait},
        {"ready", "MS", 1, 1, ready},
    };
    return commands;
}

}  // namespace headless
