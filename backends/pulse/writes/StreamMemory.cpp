#include "backends/pulse/writes/StreamMemory.hpp"

#include "backends/pulse/categories/StreamGroups.hpp"

#include <algorithm>
#include <utility>

namespace pulse {
namespace {

// Servers round volumes.
bool isNear(pa_volume_t one, pa_volume_t other) {
    constexpr pa_volume_t roundingSteps = 2;
    return std::max(one, other) - std::min(one, other) <= roundingSteps;
}

// Whether the server keeps a level for the role that its new streams get from us alone.
bool isOursToGive(const VolumeObject& object, const ServerMirror& mirror) {
    return object.kind == VolumeObject::Kind::Role && !mirror.givesEntryToStreams(object.name);
}

}  // namespace

bool StreamMemory::Memory::isMetBy(const SinkInput& stream) const {
    const bool hasVolume =
        !isVolumeGiven || isNear(pa_cvolume_max(&stream.volume), rawFromFraction(fraction));
    return hasVolume && mute.value_or(stream.mute) == stream.mute;
}

bool StreamMemory::Memory::isMetBy(const Level& kept) const {
    const bool hasVolume = !isVolumeGiven || isSameForRole(fraction, kept.volume);
    return hasVolume && mute.value_or(Mute::Off) == kept.mute;
}

// Every stream starts unmuted, so that is not a setting to keep.
void StreamMemory::Memory::take(const Level& kept) {
    fraction = kept.volume;
    isVolumeGiven = true;
    isOfUser = false;
    if (mute || kept.mute == Mute::On) mute = kept.mute;
}

// Whoever changed the entry was the last to set the object, unless the change comes from what is
// remembered. While an application has streams, they are the better guide; and an entry that comes
// into being right after a set is the server's record of a stream that the set was too late for.
void StreamMemory::followEntry(const VolumeObject& object, Memory& memory,
                               const ServerMirror& mirror, double nowSeconds) {
    const auto kept = levelOfEntry(mirror, object);
    const bool isAsBefore = kept && memory.entry && kept->mute == memory.entry->mute &&
                            isSameForRole(kept->volume, memory.entry->volume);
    // The user's volume for a role must be visible there, or the server has not stored it.
    const bool isToBeKept = memory.isOfRole && memory.isOfUser;
    if (!kept || (isAsBefore && !isToBeKept)) return;
    const bool isOfEndedStream =
        !memory.entry && memory.isOfUser && nowSeconds - memory.setSeconds < newSeconds;
    memory.entry = kept;
    const bool isOurs = isOursToGive(object, mirror);
    if (memory.isMetBy(*kept) && (memory.isVolumeGiven || !isOurs)) return;
    if (isOurs) {
        memory.take(*kept);
    } else if (memory.isOfRole) {
        memory.isVolumeGiven = false;
        memory.mute.reset();
    } else if (!isOfEndedStream && streamsOf(mirror, object).empty()) {
        memory.fraction = kept->volume;
        if (memory.mute) memory.mute = kept->mute;
    }
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
    Memory& memory = memoryOf(object, mirror, nowSeconds);
    memory.fraction = setting.fraction.value_or(memory.isGiven() ? memory.fraction : level.volume);
    memory.isVolumeGiven |= setting.fraction.has_value();
    memory.isOfUser = true;
    memory.setSeconds = nowSeconds;
    // Setting a volume unmutes the streams of now, but a program that starts muted stays muted.
    const bool isAboutMute = !setting.fraction || memory.mute;
    if (isAboutMute && setting.mute) memory.mute = setting.mute;
}

void StreamMemory::watch(const VolumeObject& object, const ServerMirror& mirror,
                         double nowSeconds) {
    const bool isRole = object.kind == VolumeObject::Kind::Role;
    if (isRole && isConcernedWith(object, mirror)) memoryOf(object, mirror, nowSeconds);
}

void StreamMemory::watchKeptRoles(const ServerMirror& mirror, double nowSeconds) {
    if (!mirror.server.pipeWire || !mirror.restoreEntries) return;
    for (const auto& [name, entry] : *mirror.restoreEntries)
        if (const auto role = roleOfEntry(name); role && !mirror.givesEntryToStreams(*role))
            watch({VolumeObject::Kind::Role, *role}, mirror, nowSeconds);
}

StreamMemory::Memory& StreamMemory::memoryOf(const VolumeObject& object, const ServerMirror& mirror,
                                             double nowSeconds) {
    const auto [found, isFirst] = memories_.try_emplace(object);
    Memory& memory = found->second;
    if (!isFirst) return memory;
    memory.isOfRole = object.kind == VolumeObject::Kind::Role;
    memory.entry = levelOfEntry(mirror, object);
    const auto streams = streamsOf(mirror, object);
    const bool hasEntry =
        mirror.restoreEntries && mirror.restoreEntries->contains(roleEntryName(object.name));
    if (isOursToGive(object, mirror) && hasEntry && streams.empty()) memory.take(*memory.entry);
    constexpr double longAgo = 2 * newSeconds;
    for (const SinkInput* stream : streams)
        memory.heard[stream->index] = {pa_cvolume_max(&stream->volume), stream->mute,
                                       nowSeconds - longAgo};
    return memory;
}

std::optional<Level> StreamMemory::remembered(const VolumeObject& object) const {
    const auto found = memories_.find(object);
    if (found == memories_.end() || !found->second.isGiven()) return std::nullopt;
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
    std::vector<VolumeObject> due;
    for (auto& [object, memory] : memories_) {
        std::erase_if(memory.heard,
                      [&](const auto& each) { return !mirror.sinkInputAt(each.first); });
        const bool moving = isMoving(object);
        if (!moving) followEntry(object, memory, mirror, nowSeconds);
        bool isDue = false;
        for (const SinkInput* stream : streamsOf(mirror, object))
            isDue |= observe(memory, *stream, nowSeconds, moving);
        if (isDue) due.push_back(object);
    }
    return due;
}

// Two objects that share a new stream would keep moving it in turn, so only the first one does.
bool StreamMemory::isClaimed(std::uint32_t sinkInputIndex) const {
    return std::ranges::any_of(memories_, [&](const auto& each) {
        const auto found = each.second.heard.find(sinkInputIndex);
        const bool isHeard = each.second.isGiven() && found != each.second.heard.end();
        return isHeard && found->second.claim == Claim::Ours;
    });
}

// Whether the stream has to be set.
bool StreamMemory::observe(Memory& memory, const SinkInput& stream, double nowSeconds,
                           bool moving) {
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
    if (hasMoved) {
        memory.fraction = fractionFromRaw(raw);
        memory.isVolumeGiven |= memory.isOfRole;
        memory.isOfUser = false;
    }
    if (isToggled && memory.mute) memory.mute = stream.mute;
    return false;
}

void StreamMemory::forgetStreams() {
    for (auto& [object, memory] : memories_)
        memory.heard.clear();
}

}  // namespace pulse
