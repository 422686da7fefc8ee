#include "shells/headless/Session.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace headless {
namespace {

template <class T>
using Named = std::pair<std::string_view, T>;

constexpr std::array phases = {
    Named<UITouchPhase>{"began", UITouchPhase::Began},
    Named<UITouchPhase>{"moved", UITouchPhase::Moved},
    Named<UITouchPhase>{"ended", UITouchPhase::Ended},
    Named<UITouchPhase>{"cancelled", UITouchPhase::Cancelled},
};

constexpr std::array keys = {
    Named<UIKey>{"tab", UIKey::Tab},       Named<UIKey>{"backtab", UIKey::BackTab},
    Named<UIKey>{"left", UIKey::Left},     Named<UIKey>{"right", UIKey::Right},
    Named<UIKey>{"up", UIKey::Up},         Named<UIKey>{"down", UIKey::Down},
    Named<UIKey>{"pageup", UIKey::PageUp}, Named<UIKey>{"pagedown", UIKey::PageDown},
    Named<UIKey>{"home", UIKey::Home},     Named<UIKey>{"end", UIKey::End},
};

template <class T, std::size_t count>
std::optional<T> named(const std::array<Named<T>, count>& table, const Word& word) {
    for (const auto& [name, value] : table)
        if (word.isBare(name)) return value;
    return std::nullopt;
}

/// Limits a number to the range of coordinates.
CGFloat coordinateFrom(double number) {
    constexpr double farthest = std::numeric_limits<CGFloat>::max();
    return static_cast<CGFloat>(std::clamp(number, -farthest, farthest));
}

std::optional<CGPoint> pointFrom(const Word& x, const Word& y) {
    const auto first = numberFrom(x);
    const auto second = numberFrom(y);
    if (!first || !second) return std::nullopt;
    return CGPoint{coordinateFrom(*first), coordinateFrom(*second)};
}

std::optional<Answer> touch(Session& session, Arguments arguments) {
    const auto phase = named(phases, arguments[0]);
    const auto point = pointFrom(arguments[1], arguments[2]);
    if (!phase || !point) return std::nullopt;
    session.stage().window().sendTouch(*phase, *point);
    return Answer::done();
}

std::optional<Answer> scroll(Session& session, Arguments arguments) {
    const auto point = pointFrom(arguments[0], arguments[1]);
    const auto steps = numberFrom(arguments[2]);
    if (!point || !steps) return std::nullopt;
    return Answer::result(session.stage().window().sendScroll(*point, *steps));
}

std::optional<Answer> key(Session& session, Arguments arguments) {
    const auto pressed = named(keys, arguments[0]);
    if (!pressed) return std::nullopt;
    return Answer::result(session.stage().window().sendKey(*pressed));
}

}  // namespace

std::span<const Command> inputCommands() {
    static constexpr Command commands[] = {
        {"touch", "began|moved|ended|cancelled X Y", 3, 3, touch},
        {"scroll", "X Y STEPS", 3, 3, scroll},
        {"key", "tab|backtab|left|right|up|down|pageup|pagedown|home|end", 1, 1, key},
    };
    return commands;
}

}  // namespace headless
