#include "backends/pulse/writes/DeviceMemory.hpp"

#include "backends/pulse/categories/Routes.hpp"

#include <cmath>

namespace pulse {
namespace {

// A headset rounds to the nearest of its steps, of which it has at least 15.
bool isNearAtHeadset(float one, float other) {
    constexpr float halfAStep = 0.5F / 15;
    return std::abs(one - other) <= halfAStep;
}

}  // namespace

void DeviceMemory::remember(const VolumeObject& object, float fraction, double nowSeconds) {
    const auto found = devices_.find(object.name);
    if (object.kind != VolumeObject::Kind::Sink || found == devices_.end()) return;
    if (found->second.isNew(nowSeconds)) found->second.given = fraction;
}

void DeviceMemory::meet(const ServerMirror& mirror, double nowSeconds) {
    std::erase_if(devices_, [&](const auto& each) {
        const Device* device = mirror.sinkNamed(each.first);
        return !device || device->index != each.second.index;
    });
    if (!mirror.server.pipeWire) return;
    for (const auto& [name, device] : mirror.sinks)
        if (isBluetooth(device)) devices_.try_emplace(name, Known{device.index, nowSeconds});
}

std::vector<DeviceVolume> DeviceMemory::observe(
    const ServerMirror& mirror, double nowSeconds,
    const std::function<bool(const VolumeObject&)>& isMoving) {
    meet(mirror, nowSeconds);
    std::vector<DeviceVolume> undone;
    for (auto& [name, known] : devices_) {
        const VolumeObject object{VolumeObject::Kind::Sink, name};
        if (!known.given || !known.isNew(nowSeconds) || isMoving(object)) continue;
        const Device& device = mirror.sinks.at(name);
        if (isNearAtHeadset(fractionFromRaw(pa_cvolume_max(&device.volume)), *known.given))
            continue;
        undone.push_back({object, *known.given});
        known.given.reset();
    }
    return undone;
}

}  // namespace pulse
