#include "backends/pulse/ServerMirror.hpp"

namespace pulse {
namespace {

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

}  // namespace

const Sink* ServerMirror::defaultSink() const {
    if (isPlaceholder(defaultSinkName)) return nullptr;
    const auto found = sinks.find(defaultSinkName);
    return found == sinks.end() ? nullptr : &found->second;
}

std::optional<ObjectVolume> ServerMirror::volumeOf(const VolumeObject& object) const {
    if (object.kind == VolumeObject::Kind::Sink) {
        const auto found = sinks.find(object.name);
        if (found == sinks.end()) return std::nullopt;
        return ObjectVolume{found->second.volume, found->second.mute};
    }
    if (!roleEntries) return std::nullopt;
    const auto found = roleEntries->find(object.name);
    if (found == roleEntries->end()) return stereo({});
    return stereo(found->second);
}

std::string ServerMirror::rememberedDevice(const std::string& entryName) const {
    if (!roleEntries) return "";
    const auto found = roleEntries->find(entryName);
    return found == roleEntries->end() ? "" : found->second.device;
}

std::string roleEntryName(const std::string& role) {
    return "sink-input-by-media-role:" + role;
}

}  // namespace pulse
