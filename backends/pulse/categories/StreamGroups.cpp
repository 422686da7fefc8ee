#include "backends/pulse/categories/StreamGroups.hpp"

#include "backends/pulse/categories/Roles.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

namespace pulse {
namespace {

bool isOfApplication(const ServerMirror& mirror, const SinkInput& stream, const std::string& name) {
    return isSameName(stream.applicationName, name) || isSameName(stream.applicationId, name) ||
           isSameName(mirror.binaryOf(stream), name);
}

bool isOfConference(const ServerMirror& mirror, const SinkInput& stream) {
    const std::string& process = mirror.processOf(stream);
    if (process.empty() || isSameRole(stream.role, "phone")) return false;
    return std::ranges::any_of(mirror.sourceOutputs, [&](const SourceOutput& recording) {
        return mirror.processOf(recording) == process;
    });
}

bool belongs(const ServerMirror& mirror, const SinkInput& stream, const VolumeObject& object) {
    switch (object.kind) {
        case VolumeObject::Kind::Role:
            return isSameRole(stream.role, object.name);
        case VolumeObject::Kind::Application:
            return isOfApplication(mirror, stream, object.name);
        case VolumeObject::Kind::Conference:
            return isOfConference(mirror, stream);
        default:
            return false;
    }
}

std::optional<Level> levelOf(const ServerMirror& mirror, const Target& target) {
    const auto volume = mirror.volumeOf(target);
    if (!volume) return std::nullopt;
    return levelFrom(volume->volume, volume->mute);
}

Target entryOf(const VolumeObject& role) {
    return {.kind = Target::Kind::RestoreEntry, .name = roleEntryName(role.name)};
}

// The server's entry for the application's streams without a role.
const std::string* entryOfApplication(const ServerMirror& mirror, const std::string& application) {
    if (!mirror.restoreEntries) return nullptr;
    const auto found = std::ranges::find_if(*mirror.restoreEntries, [&](const auto& each) {
        const auto owner = applicationOfEntry(each.first);
        return owner && isSameName(*owner, application);
    });
    return found == mirror.restoreEntries->end() ? nullptr : &found->first;
}

// An entry that does not exist yet is created, for other mixers and for the next stream.
Target entryForApplication(const ServerMirror& mirror, const std::string& application) {
    const std::string* known = entryOfApplication(mirror, application);
    return {.kind = Target::Kind::RestoreEntry,
            .name = known ? *known : applicationEntryName(application)};
}

// A stream of event sounds is short, and its program may choose its volume. Where the server keeps
// the entry in step with the volumes that last, the entry is the steadier answer.
bool entrySpeaksForStreams(const ServerMirror& mirror, const VolumeObject& role) {
    return isSameName(role.name, "event") && !mirror.server.pipeWire && mirror.restoreEntries;
}

bool isLouder(const Level& one, const Level& other) {
    return one.mute == other.mute ? one.volume > other.volume : one.mute == Mute::Off;
}

std::optional<Level> loudest(const std::vector<const SinkInput*>& streams) {
    std::optional<Level> result;
    for (const SinkInput* stream : streams) {
        const Level level = levelFrom(stream->volume, stream->mute);
        if (!result || isLouder(level, *result)) result = level;
    }
    return result;
}

std::optional<Level> levelOfRole(const ServerMirror& mirror, const VolumeObject& role) {
    if (!entrySpeaksForStreams(mirror, role))
        if (const auto live = loudest(streamsOf(mirror, role))) return live;
    return levelOfEntry(mirror, role);
}

std::vector<Target> ifThere(const ServerMirror& mirror, Target target) {
    if (!mirror.volumeOf(target)) return {};
    return {std::move(target)};
}

}  // namespace

bool isUsersStream(const SinkInput& stream) {
    return stream.hasVolume && !isPlumbing(stream);
}

std::vector<const SinkInput*> streamsOf(const ServerMirror& mirror, const VolumeObject& object) {
    std::vector<const SinkInput*> members;
    for (const SinkInput& stream : mirror.sinkInputs)
        if (isUsersStream(stream) && belongs(mirror, stream, object)) members.push_back(&stream);
    return members;
}

std::vector<Target> targetsOf(const ServerMirror& mirror, const VolumeObject& object) {
    if (object.kind == VolumeObject::Kind::Sink)
        return ifThere(mirror, {.kind = Target::Kind::Sink, .name = object.name});
    if (object.kind == VolumeObject::Kind::Source)
        return ifThere(mirror, {.kind = Target::Kind::Source, .name = object.name});
    std::vector<Target> targets;
    if (object.kind == VolumeObject::Kind::Role) targets = ifThere(mirror, entryOf(object));
    for (const SinkInput* stream : streamsOf(mirror, object))
        targets.push_back({.kind = Target::Kind::SinkInput, .sinkInputIndex = stream->index});
    if (targets.empty() && object.kind == VolumeObject::Kind::Application)
        return ifThere(mirror, entryForApplication(mirror, object.name));
    return targets;
}

std::optional<Level> levelOf(const ServerMirror& mirror, const VolumeObject& object) {
    switch (object.kind) {
        case VolumeObject::Kind::Sink:
            return levelOf(mirror, Target{.kind = Target::Kind::Sink, .name = object.name});
        case VolumeObject::Kind::Source:
            return levelOf(mirror, Target{.kind = Target::Kind::Source, .name = object.name});
        case VolumeObject::Kind::Role:
            return levelOfRole(mirror, object);
        default:
            return loudest(streamsOf(mirror, object));
    }
}

std::optional<Level> levelOfEntry(const ServerMirror& mirror, const VolumeObject& object) {
    if (object.kind == VolumeObject::Kind::Role) return levelOf(mirror, entryOf(object));
    if (object.kind != VolumeObject::Kind::Application) return std::nullopt;
    if (!entryOfApplication(mirror, object.name)) return std::nullopt;
    return levelOf(mirror, entryForApplication(mirror, object.name));
}

}  // namespace pulse
