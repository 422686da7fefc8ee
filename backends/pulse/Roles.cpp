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

// Sinks carry the words of the session's policy, streams those of the protocol.
bool isSameRole(std::string_view ofSink, std::string_view ofStreams) {
    if (isSameName(ofSink, ofStreams)) return true;
    return (isSameName(ofSink, "notification"sv) && isSameName(ofStreams, "event"sv)) ||
           (isSameName(ofSink, "communication"sv) && isSameName(ofStreams, "phone"sv));
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

// By the name first: the intended roles of two sinks may overlap.
const Device* roleSinkFor(const ServerMirror& mirror, std::string_view role) {
    const Device* intended = nullptr;
    for (const auto& [name, sink] : mirror.sinks) {
        if (!isRoleSink(sink)) continue;
        if (isSameRole(roleInName(sink), role)) return &sink;
        if (!intended && isIntendedFor(sink, role)) intended = &sink;
    }
    return intended;
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

// Policies of older sessions connect their endpoints without a stream: then a device of the
// machine's own is the best guess.
const Device* anyRealSink(const ServerMirror& mirror) {
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
    return sink && !isVirtual(*sink) ? sink : anyRealSink(mirror);
}

}  // namespace pulse
