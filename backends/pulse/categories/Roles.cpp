#include "backends/pulse/categories/Roles.hpp"

#include <algorithm>
#include <array>
#include <string>

using namespace std::string_view_literals;

namespace pulse {
namespace {

// Loopbacks of the session's policy, and the endpoints of older session managers.
constexpr std::array<std::string_view, 2> roleSinkPrefixes = {"input.loopback.sink.role.",
                                                              "control.endpoint."};
constexpr std::string_view playingEnd = "output.";
constexpr std::string_view takingEnd = "input.";

// Names are protocol identifiers: compare them without regard to the locale.
char inLowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// The words for one role, PulseAudio's first: streams use its words or PipeWire's, role sinks those
// of the session manager.
using Words = std::array<std::string_view, 3>;
constexpr Words wordsOfRoles[] = {
    {"event"sv, "notification"sv},
    {"phone"sv, "communication"sv, "call"sv},
    {"video"sv, "movie"sv},
    {"animation"sv, "movie"sv},
    {"a11y"sv, "accessibility"sv, "assistant"sv},
    {"alarm"sv, "alert"sv},
};

bool has(const Words& words, std::string_view word) {
    return std::ranges::any_of(
        words, [&](std::string_view each) { return !each.empty() && isSameName(each, word); });
}

bool isIntendedFor(const Device& sink, std::string_view role) {
    return std::ranges::any_of(sink.intendedRoles,
                               [&](const auto& each) { return isSameRole(each, role); });
}

// A higher score is a more certain match: its own word in the name, another word for the role, an
// intended role. The intended roles of two sinks may overlap.
int fitnessFor(const Device& sink, std::string_view role) {
    constexpr int byItsWord = 3;
    constexpr int byAnotherWord = 2;
    constexpr int byIntention = 1;
    if (!isRoleSink(sink)) return 0;
    if (isSameName(roleInName(sink), role)) return byItsWord;
    if (isSameRole(roleInName(sink), role)) return byAnotherWord;
    return isIntendedFor(sink, role) ? byIntention : 0;
}

const Device* roleSinkFor(const ServerMirror& mirror, std::string_view role) {
    const Device* best = nullptr;
    int bestFitness = 0;
    for (const auto& [name, sink] : mirror.sinks) {
        const int fitness = fitnessFor(sink, role);
        if (fitness <= bestFitness) continue;
        bestFitness = fitness;
        best = &sink;
    }
    return best;
}

// PulseAudio's property for the device behind a virtual one is out of date after a move, so the
// stream counts where there is one.
const Device* nextBehind(const ServerMirror& mirror, const Device& sink) {
    if (const SinkInput* stream = playbackOf(mirror, sink))
        if (const Device* behind = mirror.sinkOf(*stream)) return behind;
    return sink.masterDevice.empty() ? nullptr : mirror.sinkNamed(sink.masterDevice);
}

// While nothing plays on it, and with older session managers always, a role's sink is not connected
// to anything: it will play where everything does, on the default sink. If that is virtual too, a
// device of the machine is the best guess.
const Device* likelySink(const ServerMirror& mirror) {
    const Device* const standard = mirror.defaultSink();
    if (standard && !isVirtual(*standard)) return standard;
    const Device* first = nullptr;
    for (const auto& [name, sink] : mirror.sinks) {
        if (isVirtual(sink) || name == "auto_null"sv) continue;
        if (!first || (first->bus.empty() && !sink.bus.empty())) first = &sink;
    }
    return first;
}

}  // namespace

bool isSameName(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, inLowerCase, inLowerCase);
}

std::string lowered(std::string_view name) {
    std::string result(name);
    std::ranges::transform(result, result.begin(), inLowerCase);
    return result;
}

bool isSameRole(std::string_view one, std::string_view other) {
    return isSameName(one, other) || std::ranges::any_of(wordsOfRoles, [&](const Words& words) {
               return has(words, one) && has(words, other);
           });
}

std::string_view streamRole(std::string_view role) {
    const auto* found =
        std::ranges::find_if(wordsOfRoles, [&](const Words& words) { return has(words, role); });
    return found == std::end(wordsOfRoles) ? role : found->front();
}

bool isPlumbing(const SinkInput& stream) {
    return !stream.linkGroup.empty() || isSameName(stream.role, "loopback"sv) ||
           stream.role == "filter"sv || stream.role == "abstract"sv;
}

std::string_view roleInName(const Device& sink) {
    const std::string_view name = sink.name;
    for (const std::string_view prefix : roleSinkPrefixes)
        if (name.starts_with(prefix)) return name.substr(prefix.size());
    return {};
}

bool isRoleSink(const Device& sink) {
    return !roleInName(sink).empty();
}

bool isVirtual(const Device& sink) {
    return isRoleSink(sink) || !sink.masterDevice.empty() || !sink.linkGroup.empty();
}

const SinkInput* playbackOf(const ServerMirror& mirror, const Device& sink) {
    const std::string_view name = sink.name;
    const std::string playingName =
        name.starts_with(takingEnd) ? std::string(playingEnd).append(name.substr(takingEnd.size()))
                                    : "";
    const auto first = [&](auto&& isPlayback) -> const SinkInput* {
        const auto found = std::ranges::find_if(mirror.sinkInputs, isPlayback);
        return found == mirror.sinkInputs.end() ? nullptr : &*found;
    };
    if (sink.ownerModule != PA_INVALID_INDEX)
        if (const SinkInput* own =
                first([&](const SinkInput& each) { return each.ownerModule == sink.ownerModule; }))
            return own;
    if (!playingName.empty())
        if (const SinkInput* named = first([&](const SinkInput& each) {
                return each.nodeName == playingName ||
                       each.nodeName == std::string(playingEnd).append(name);
            }))
            return named;
    if (sink.linkGroup.empty()) return nullptr;
    return first([&](const SinkInput& each) { return each.linkGroup == sink.linkGroup; });
}

const Device* roleSinkFor(const ServerMirror& mirror,
                          std::initializer_list<std::string_view> roles) {
    for (const std::string_view role : roles)
        if (const Device* sink = roleSinkFor(mirror, role)) return sink;
    return nullptr;
}

const Device* realSinkBehind(const ServerMirror& mirror, const Device* sink) {
    if (!sink) return nullptr;
    // Virtual devices may be connected in a circle while they are rearranged.
    for (std::size_t steps = 0; sink && isVirtual(*sink) && steps < mirror.sinks.size(); ++steps)
        sink = nextBehind(mirror, *sink);
    return sink && !isVirtual(*sink) ? sink : likelySink(mirror);
}

}  // namespace pulse
