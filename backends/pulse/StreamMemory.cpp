#include "backends/pulse/StreamMemory.hpp"

#include "backends/pulse/StreamGroups.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace pulse {
namespace {

// Servers round on their way.
bool isNear(pa_volume_t one, pa_volume_t other) {
    constexpr pa_volume_t roundingSteps = 2;
    return std::max(one, other) - std::min(one, other) <= roundingSteps;
}

// PipeWire keeps six decimals of a role's loudness, which is the volume's third power.
bool isRoundedByServer(float remembered, float entry) {
    constexpr float rounding = 1e-6F;
    return std::abs(std::pow(remembered, 3.0F) - std::pow(entry, 3.0F)) <= rounding;
}

bool isOutdated(const VolumeObject& object, float remembered, const ServerMirror& mirror) {
    if (object.kind != VolumeObject::Kind::Role) return false;
    const auto entry = volumeOfEntry(mirror, object);
    return entry && !isRoundedByServer(remembered, *entry);
}

}  // namespace

bool StreamMemory::isConcernedWith(const VolumeObject& object, const ServerMirror& mirror) {
    const bool roleIsOurs = mirror.server.pipeWire.has_value();
    return object.kind == VolumeObject::Kind::Application ||
           object.kind == VolumeObject::Kind::Conference ||
           (object.kind == VolumeObject::Kind::Role && roleIsOurs);
}

void StreamMemory::remember(const VolumeObject& object, float fraction, const ServerMirror& mirror,
                            double nowSeconds) {
    if (!isConcernedWith(object, mirror)) return;
    const auto [found, isFirst] = memories_.try_emplace(object);
    found->second.fraction = fraction;
    if (!isFirst) return;
    for (const Stream* stream : streamsOf(mirror, object))
        found->second.heard[stream->index] = {pa_cvolume_max(&stream->volume),
                                              nowSeconds - newSeconds};
}

std::optional<float> StreamMemory::remembered(const VolumeObject& object) const {
    const auto found = memories_.find(object);
    if (found == memories_.end()) return std::nullopt;
    return found->second.fraction;
}

std::vector<VolumeObject> StreamMemory::observe(
    const ServerMirror& mirror, double nowSeconds,
    const std::function<bool(const VolumeObject&)>& isMoving) {
    std::erase_if(memories_, [&](const auto& each) {
        return !isMoving(each.first) && isOutdated(each.first, each.second.fraction, mirror);
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
        memory.heard[stream.index] = {raw, nowSeconds, claim};
    }
    Heard& heard = memory.heard[stream.index];
    const bool changed = !isNear(std::exchange(heard.raw, raw), raw);
    if (nowSeconds - heard.sinceSeconds < newSeconds && heard.claim == Claim::Ours) {
        const bool isRight = isNear(raw, rawFromFraction(memory.fraction));
        return !isRight && (isFirstSight || !moving);
    }
    if (changed && !moving) memory.fraction = fractionFromRaw(raw);
    return false;
}

void StreamMemory::forgetStreams() {
    for (auto& [object, memory] : memories_)
        memory.heard.clear();
}

}  // namespace pulse
