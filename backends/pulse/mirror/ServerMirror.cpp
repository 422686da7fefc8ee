#include "backends/pulse/mirror/ServerMirror.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace pulse {

namespace {

constexpr std::string_view rolePrefix = "sink-input-by-media-role:";
constexpr std::string_view applicationPrefix = "sink-input-by-application-name:";
constexpr std::string_view applicationIdPrefix = "sink-input-by-application-id:";

// Text that is not a number counts as 0.
Version versionIn(const std::string& text) {
    Version version;
    std::sscanf(text.c_str(), "%9d.%9d.%9d", &version.major, &version.minor, &version.micro);
    return version;
}

// Always stereo, since the entry is written back: a mono volume silences one channel of stereo
// streams on some servers. An entry may remember only a device and have no volume.
ObjectVolume stereo(const RestoreEntry& entry) {
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

std::optional<ObjectVolume> volumeOfEntry(const std::optional<RestoreEntryMap>& entries,
                                          const std::string& name) {
    if (!entries) return std::nullopt;
    const auto found = entries->find(name);
    return stereo(found == entries->end() ? RestoreEntry{} : found->second);
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

const Device* ServerMirror::sinkOf(const SinkInput& stream) const {
    const auto found = std::ranges::find_if(
        sinks, [&](const auto& each) { return each.second.index == stream.sinkIndex; });
    const bool isKnown = stream.sinkIndex != PA_INVALID_INDEX && found != sinks.end();
    return isKnown ? &found->second : nullptr;
}

const SinkInput* ServerMirror::sinkInputAt(std::uint32_t index) const {
    const auto found = std::ranges::find(sinkInputs, index, &SinkInput::index);
    return found == sinkInputs.end() ? nullptr : &*found;
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
    return std::ranges::any_of(sinkInputs, isUnknown) ||
           std::ranges::any_of(sourceOutputs, isUnknown);
}

std::optional<ObjectVolume> ServerMirror::volumeOf(const Target& target) const {
    switch (target.kind) {
        case Target::Kind::Sink:
            return volumeOrNothing(sinkNamed(target.name));
        case Target::Kind::Source:
            return volumeOrNothing(sourceNamed(target.name));
        case Target::Kind::SinkInput:
            return volumeOrNothing(sinkInputAt(target.sinkInputIndex));
        case Target::Kind::RestoreEntry:
            return volumeOfEntry(restoreEntries, target.name);
    }
    return std::nullopt;
}

std::string ServerMirror::rememberedDevice(const std::string& entryName) const {
    if (!restoreEntries) return "";
    const auto found = restoreEntries->find(entryName);
    return found == restoreEntries->end() ? "" : found->second.device;
}

Version ServerMirror::sessionManager() const {
    const auto found = std::ranges::find_if(
        clients, [](const auto& each) { return each.second.name == "WirePlumber"; });
    return found == clients.end() ? Version{} : versionIn(found->second.version);
}

bool ServerMirror::givesEntryToStreams(const std::string& role) const {
    constexpr Version firstThatGivesEventsAlone{0, 5, 0};
    return role == "event" || sessionManager() < firstThatGivesEventsAlone;
}

bool ServerMirror::hasAnotherMixer() const {
    return std::ranges::any_of(clients, [](const auto& each) {
        return each.second.name == ourApplicationName && each.second.binary != "tarnwickctl";
    });
}

bool isPlaceholder(const std::string& sinkName) {
    return sinkName.empty() || sinkName == "@DEFAULT_SINK@" || sinkName == "auto_null";
}

std::string roleEntryName(const std::string& role) {
    return std::string(rolePrefix).append(role);
}

std::optional<std::string> roleOfEntry(const std::string& entryName) {
    if (!entryName.starts_with(rolePrefix)) return std::nullopt;
    return entryName.substr(rolePrefix.size());
}

std::string applicationEntryName(const std::string& application) {
    return std::string(applicationPrefix).append(application);
}

std::optional<std::string> applicationOfEntry(const std::string& entryName) {
    for (const std::string_view prefix : {applicationPrefix, applicationIdPrefix})
        if (entryName.starts_with(prefix)) return entryName.substr(prefix.size());
    return std::nullopt;
}

std::optional<Version> pipeWireVersion(const std::string& serverName) {
    static const std::string mark = "PipeWire ";
    const std::size_t place = serverName.find(mark);
    if (place == std::string::npos) return std::nullopt;
    return versionIn(serverName.substr(place + mark.size()));
}

pa_volume_t rawFromFraction(float fraction) {
    const double kept = fraction > 0 ? std::min(static_cast<double>(fraction), 1.0) : 0.0;
    return static_cast<pa_volume_t>(std::lround(kept * PA_VOLUME_NORM));
}

float fractionFromRaw(pa_volume_t raw) {
    return static_cast<float>(std::min(raw, PA_VOLUME_NORM)) / static_cast<float>(PA_VOLUME_NORM);
}

Level levelFrom(const pa_cvolume& volume, Mute mute) {
    return {fractionFromRaw(pa_cvolume_max(&volume)), mute};
}

bool isSameForRole(float one, float other) {
    constexpr float rounding = 1e-6F;
    return std::abs(std::pow(one, 3.0F) - std::pow(other, 3.0F)) <= rounding;
}

}  // namespace pulse
