#include "shells/headless/Session.hpp"
#include "shells/headless/Waiter.hpp"

#include <functional>

namespace headless {
namespace {

constexpr double greatestTime = 86'400'000;  // Milliseconds: a day.
constexpr std::size_t mostEntries = 16;      // Of an event; none has so many.

/// Runs `command` with the seconds that the word stands for; nullopt if it is no number.
std::optional<Answer> withTime(const Word& word,
                               const std::function<Answer(double seconds)>& command) {
    const auto milliseconds = numberFrom(word);
    if (!milliseconds) return std::nullopt;
    if (*milliseconds < 0 || *milliseconds > greatestTime)
        return Answer::failed("the time must lie between 0 and 86400000 milliseconds");
    return command(*milliseconds / millisecondsPerSecond);
}

std::optional<Answer> advance(Session& session, Arguments arguments) {
    return withTime(arguments[0], [&](double seconds) {
        return Answer::from(session.timeline().advance(seconds));
    });
}

std::optional<Answer> wait(Session& session, Arguments arguments) {
    return withTime(arguments[0], [&](double seconds) {
        std::optional<Json> event;
        const auto isThere = [&] {
            if (!event) event = session.recentEvents().take(arguments.subspan(1));
            return event.has_value();
        };
        if (const Problem problem = session.timeline().advance(seconds, isThere))
            return Answer::from(problem);
        return event ? Answer::result(*std::move(event))
                     : Answer::failed("there was no such event");
    });
}

std::optional<Answer> ready(Session& session, Arguments arguments) {
    return withTime(arguments[0], [&](double seconds) {
        const auto isReady = [&] { return session.isReady(); };
        if (const Problem problem = session.timeline().advance(seconds, isReady))
            return Answer::from(problem);
        return isReady() ? Answer::done() : Answer::failed("no sound server answers");
    });
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
