#include "backends/pulse/StreamMemory.hpp"

#include "backends/pulse/StreamGroups.hpp"

#include <algorithm>
#include <utility>

namespace pulse {
namespace {

// Servers round on their way.
bool isNear(pa_volume_t one, pa_volume_t other) {
    constexpr pa_volume_t roundingSteps = 2;
    return std::max(one, other) - std::min(one, other) <= roundingSteps;
}

}  // namespace

bool StreamMemory::Memory::isMetBy(const Stream& stream) const {
    const bool hasVolume =
        !isVolumeGiven || isNear(pa_cvolume_max(&stream.volume), rawFromFraction(fraction));
    return hasVolume && mute.value_or(stream.mute) == stream.mute;
}

bool StreamMemory::isOutdated(const VolumeObject& object, const Memory& memory,
                              const ServerMirror& mirror) {
    if (object.kind != VolumeObject::Kind::Role) return false;
    const auto entry = levelOfEntry(mirror, object);
    if (!entry) return false;
    const bool hasMoved = memory.isVolumeGiven && !isSameForRole(memory.fraction, entry->volume);
    return hasMoved || memory.mute.value_or(Mute::Off) != entry->mute;
}

bool StreamMemory::isConcernedWith(const VolumeObject& object, const ServerMirror& mirror) {
    const bool roleIsOurs = mirror.server.pipeWire.has_value();
    return object.kind == VolumeObject::Kind::Application ||
           object.kind == VolumeObject::Kind::Conference ||
           (object.kind == VolumeObject::Kind::Role && roleIsOurs);
}

void StreamMemory::remember(const VolumeObject& object, const Setting& setting, const Level& level,
                            const ServerMirror& mirror, double nowSeconds) {
    if (!isConcernedWith(object, mirror)) return;
    const auto [found, isFirst] = memories_.try_emplace(object);
    Memory& memory = found->second;
    memory.fraction = setting.fraction.value_or(isFirst ? level.volume : memory.fraction);
    memory.isVolumeGiven |= setting.fraction.has_value();
    // A volume unmutes what there is: that alone says nothing of a program that begins muted.
    const bool isAboutMute = !setting.fraction || memory.mute;
    if (isAboutMute && setting.mute) memory.mute = setting.mute;
    if (!isFirst) return;
    for (const Stream* stream : streamsOf(mirror, object))
        memory.heard[stream->index] = {pa_cvolume_max(&stream->volume), stream->mute,
                                       nowSeconds - newSeconds};
}

std::optional<Level> StreamMemory::remembered(const VolumeObject& object) const {
    const auto found = memories_.find(object);
    if (found == memories_.end()) return std::nullopt;
    return Level{found->second.fraction, found->second.mute.value_or(Mute::Off)};
}

Setting StreamMemory::settingFor(const VolumeObject& object) const {
    const auto found = memories_.find(object);
    if (found == memories_.end()) return {};
    const Memory& memory = found->second;
    return {memory.isVolumeGiven ? std::optional(memory.fraction) : std::nullopt, memory.mute};
}

std::vector<VolumeObject> StreamMemory::observe(
    const ServerMirror& mirror, double nowSeconds,
    const std::function<bool(const VolumeObject&)>& isMoving) {
    std::erase_if(memories_, [&](const auto& each) {
        return !isMoving(each.first) && isOutdated(each.first, each.second, mirror);
    });
    std::vector<VolumeObject> due;
    for (auto& [object, memory] : memories_) {
        std::erase_if(memory.heard, [&](const auto& each) { return !mirror.streamAt(each.first); });
        const bool moving = isMoving(object);
        bool isDue = false;
        for (const Stream* stream : streamsOf(mirror, object))
            isDue |= observe(memory, *stream, nowSeconds, moving);
        if (isDue) due.push_back(object);
    }
    return due;
}

// Two objects that share a new stream would take turns at moving it: the first one does.
bool StreamMemory::isClaimed(std::uint32_t streamIndex) const {
    return std::ranges::any_of(memories_, [&](const auto& each) {
        const auto found = each.second.heard.find(streamIndex);
        return found != each.second.heard.end() && found->second.claim == Claim::Ours;
    });
}

// Whether the stream has to be moved.
bool StreamMemory::observe(Memory& memory, const Stream& stream, double nowSeconds, bool moving) {
    const pa_volume_t raw = pa_cvolume_max(&stream.volume);
    const auto known = memory.heard.find(stream.index);
    const bool isFirstSight = known == memory.heard.end();
    if (isFirstSight) {
        const Claim claim = isClaimed(stream.index) ? Claim::AnotherObjects : Claim::Ours;
        memory.heard[stream.index] = {raw, stream.mute, nowSeconds, claim};
    }
    Heard& heard = memory.heard[stream.index];
    const bool hasMoved = !isNear(std::exchange(heard.raw, raw), raw);
    const bool isToggled = std::exchange(heard.mute, stream.mute) != stream.mute;
    if (nowSeconds - heard.sinceSeconds < newSeconds && heard.claim == Claim::Ours)
        return !memory.isMetBy(stream) && (isFirstSight || !moving);
    if (moving) return false;
    if (hasMoved) memory.fraction = fractionFromRaw(raw);
    if (isToggled && memory.mute) memory.mute = stream.mute;
    return false;
}

void StreamMemory::forgetStreams() {
    for (auto& [object, memory] : memories_)
        memory.heard.clear();
}

}  // namespace pulse
