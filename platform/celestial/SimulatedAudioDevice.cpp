#include "platform/celestial/SimulatedAudioDevice.hpp"

#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>

namespace {
float fractionFrom(float volume) {
    return volume > 0 ? std::min(volume, 1.0F) : 0.0F;  // Not a number counts as silence.
}
}  // namespace

SimulatedAudioDevice::SimulatedAudioDevice() {
    for (const char* name :
         {"Ringtone", "Audio/Video", "HeadsetBT", "HeadphonesBT", "PhoneCall", "VideoConference"})
        categories_.emplace(name, Category{});
}

bool SimulatedAudioDevice::getVolume(float& volume, const NSString& category) {
    const auto found = category ? categories_.find(*category) : categories_.end();
    if (found == categories_.end() || !found->second.readable) return false;
    volume = found->second.volume;
    return true;
}

bool SimulatedAudioDevice::setVolumeTo(float volume, const NSString& category) {
    if (observer_) observer_(category, volume);
    const auto found = category ? categories_.find(*category) : categories_.end();
    if (found == categories_.end()) return false;
    found->second.volume = fractionFrom(volume);
    announceLater(found->first, found->second.volume);
    return true;
}

NSString SimulatedAudioDevice::routeForCategory(const NSString& category) {
    const auto found = category ? categories_.find(*category) : categories_.end();
    return found == categories_.end() ? std::nullopt : found->second.route;
}

void SimulatedAudioDevice::changeVolume(const std::string& category, float volume) {
    Category& changed = categories_[category];
    changed.volume = fractionFrom(volume);
    announceLater(category, changed.volume);
}

void SimulatedAudioDevice::setReadable(const std::string& category, bool readable) {
    categories_[category].readable = readable;
}

void SimulatedAudioDevice::setRoute(const std::string& category, const NSString& route) {
    categories_[category].route = route;
}

void SimulatedAudioDevice::announceLater(const std::string& category, float volume) {
    NSRunLoop::mainRunLoop().performAfterDelay(
        0, [category, volume] { postEffectiveVolumeDidChange(category, volume); });
}
