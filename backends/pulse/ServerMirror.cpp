#include "backends/pulse/ServerMirror.hpp"

#include <algorithm>
#include <cstdio>

namespace pulse {
namespace {

const std::string rolePrefix = "sink-input-by-media-role:";

// What is not a number is 0.
Version versionIn(const std::string& text) {
    Version version;
    std::sscanf(text.c_str(), "%9d.%9d.%9d", &version.major, &version.minor, &version.micro);
    return version;
}

// What servers name as default while there is no device: a placeholder and a sink without sound.
bool isPlaceholder(const std::string& sinkName) {
    return sinkName.empty() || sinkName == "@DEFAULT_SINK@" || sinkName == "auto_null";
}

// Stereo whatever the entry says, since it is written back so: a mono volume silences a channel
// of stereo streams on some servers. An entry may remember a device alone and have no volume.
ObjectVolume stereo(const RoleEntry& entry) {
    ObjectVolume result{entry.volume, entry.mute};
    if (entry.volume.channels == 2) return result;
    const bool hasVolume = entry.volume.channels > 0;
    pa_cvolume_set(&result.volume, 2, hasVolume ? pa_cvolume_max(&entry.volume) : PA_VOLUME_NORM);
    return result;
}

const Device* named(const DeviceMap& devices, const std::string& name) {
    const auto found = devices.find(name);
    return found == devices.end() ? nullptr : &found->second;
}

template <class Described>
std::optional<ObjectVolume> volumeOrNothing(const Described* described) {
    if (!described) return std::nullopt;
    return ObjectVolume{described->volume, described->mute};
}

std::optional<ObjectVolume> volumeOfEntry(const std::optional<RoleEntryMap>& entries,
                                          const std::string& name) {
    if (!entries) return std::nullopt;
    const auto found = entries->find(name);
    return stereo(found == entries->end() ? RoleEntry{} : found->second);
}

}  // namespace

const Device* ServerMirror::defaultSink() const {
    return isPlaceholder(server.defaultSinkName) ? nullptr : sinkNamed(server.defaultSinkName);
}

const Device* ServerMirror::sinkNamed(const std::string& name) const {
    return named(sinks, name);
}

const Device* ServerMirror::sourceNamed(const std::string& name) const {
    return named(sources, name);
}

const Device* ServerMirror::sinkOf(const Stream& stream) const {
    const auto found = std::ranges::find_if(
        sinks, [&](const auto& each) { return each.second.index == stream.sinkIndex; });
    const bool isKnown = stream.sinkIndex != PA_INVALID_INDEX && found != sinks.end();
    return isKnown ? &found->second : nullptr;
}

const Stream* ServerMirror::streamAt(std::uint32_t index) const {
    const auto found = std::ranges::find(streams, index, &Stream::index);
    return found == streams.end() ? nullptr : &*found;
}

const Client& ServerMirror::clientAt(std::uint32_t index) const {
    static const Client unknown;
    const auto found = clients.find(index);
    return found == clients.end() ? unknown : found->second;
}

bool ServerMirror::lacksClients() const {
    const auto isUnknown = [&](const auto& described) {
        return described.processId.empty() && described.clientIndex != PA_INVALID_INDEX &&
               !clients.contains(described.clientIndex);
    };
    return std::ranges::any_of(streams, isUnknown) || std::ranges::any_of(recordings, isUnknown);
}

std::optional<ObjectVolume> ServerMirror::volumeOf(const Target& target) const {
    switch (target.kind) {
        case Target::Kind::Sink:
            return volumeOrNothing(sinkNamed(target.name));
        case Target::Kind::Source:
            return volumeOrNothing(sourceNamed(target.name));
        case Target::Kind::Stream:
            return volumeOrNothing(streamAt(target.streamIndex));
        case Target::Kind::RoleEntry:
            return volumeOfEntry(roleEntries, target.name);
    }
    return std::nullopt;
}

std::string ServerMirror::rememberedDevice(const std::string& entryName) const {
    if (!roleEntries) return "";
    const auto found = roleEntries->find(entryName);
    return found == roleEntries->end() ? "" : found->second.device;
}

bool ServerMirror::givesEntryToStreams(const std::string& role) const {
    constexpr Version firstThatGivesEventsAlone{0, 5, 0};
    const auto isSessionManager = [](const auto& each) {
        return each.second.name == "WirePlumber";
    };
    const auto found = std::ranges::find_if(clients, isSessionManager);
    return role == "event" || found == clients.end() ||
           versionIn(found->second.version) < firstThatGivesEventsAlone;
}

bool ServerMirror::hasAnotherMixer() const {
    return std::ranges::any_of(clients, [](const auto& each) {
        return each.second.name == ourApplicationName && each.second.binary != "tarnwickctl";
    });
}

std::string roleEntryName(const std::string& role) {
    return rolePrefix + role;
}

std::optional<std::string> roleOfEntry(const std::string& entryName) {
    if (!entryName.starts_with(rolePrefix)) return std::nullopt;
    return entryName.substr(rolePrefix.size());
}

std::optional<Version> pipeWireVersion(const std::string& serverName) {
    static const std::string mark = "PipeWire ";
    const std::size_t place = serverName.find(mark);
    if (place == std::string::npos) return std::nullopt;
    return versionIn(serverName.substr(place + mark.size()));
}

}  // namespace pulse
