#include "backends/pulse/Roles.hpp"

#include <algorithm>
#include <array>
#include <string>

using namespace std::string_view_literals;

namespace pulse {
namespace {

// Loopbacks of the session's policy, and its endpoints in older ones.
constexpr std::array<std::string_view, 2> roleSinkPrefixes = {"input.loopback.sink.role.",
                                                              "control.endpoint."};
constexpr std::string_view playingEnd = "output.";
constexpr std::string_view takingEnd = "input.";

// Names are words of a protocol: the user's language has no say in what is the same.
char lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// The words of one role, PulseAudio's first: streams carry its words or PipeWire's, the outputs of
// roles those of the session manager.
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

// Empty for a device that is no role's.
std::string_view roleInName(const Device& sink) {
    const std::string_view name = sink.name;
    for (const std::string_view prefix : roleSinkPrefixes)
        if (name.starts_with(prefix)) return name.substr(prefix.size());
    return {};
}

bool isIntendedFor(const Device& sink, std::string_view role) {
    return std::ranges::any_of(sink.intendedRoles,
                               [&](const auto& each) { return isSameRole(each, role); });
}

// The better the surer: its own word in the name, another word for the role, an intention. The
// intended roles of two sinks may overlap.
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

bool isVirtual(const Device& sink) {
    return isRoleSink(sink) || !sink.masterDevice.empty() || !sink.linkGroup.empty();
}

bool playsFor(const Stream& stream, const Device& sink) {
    if (!sink.linkGroup.empty() && stream.linkGroup == sink.linkGroup) return true;
    const std::string_view name = sink.name;
    return name.starts_with(takingEnd) &&
           stream.nodeName == std::string(playingEnd).append(name.substr(takingEnd.size()));
}

const Device* nextBehind(const ServerMirror& mirror, const Device& sink) {
    if (!sink.masterDevice.empty()) return mirror.sinkNamed(sink.masterDevice);
    const auto stream = std::ranges::find_if(
        mirror.streams, [&](const Stream& each) { return playsFor(each, sink); });
    return stream == mirror.streams.end() ? nullptr : mirror.sinkOf(*stream);
}

// Where nothing plays by it, and in older sessions always, an output for a role is connected to
// nothing: then it will play where everything does, on the default output. Where that is virtual
// too, a device of the machine's own is the best guess.
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
    return std::ranges::equal(one, other, {}, lowered, lowered);
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

bool isPlumbing(const Stream& stream) {
    return !stream.linkGroup.empty() || isSameName(stream.role, "loopback"sv) ||
           stream.role == "filter"sv || stream.role == "abstract"sv;
}

bool isRoleSink(const Device& sink) {
    return !roleInName(sink).empty();
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
