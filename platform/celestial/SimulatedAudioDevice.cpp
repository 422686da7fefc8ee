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

SimulatedAudioDevice::Category* SimulatedAudioDevice::named(const NSString& category) {
    const auto found = category ? categories_.find(*category) : categories_.end();
    return found == categories_.end() ? nullptr : &found->second;
}

bool SimulatedAudioDevice::getVolume(float& volume, const NSString& category) {
    const std::optional<Level> level = levelOf(category);
    if (level) volume = level->heard();
    return level.has_value();
}

bool SimulatedAudioDevice::setVolumeTo(float volume, const NSString& category) {
    if (observer_) observer_(category, volume);
    Category* const changed = named(category);
    if (!changed) return false;
    changed->level = {fractionFrom(volume), Mute::Off};
    announceLater(*category);
    return true;
}

std::optional<AVSystemController::Level> SimulatedAudioDevice::levelOf(const NSString& category) {
    const Category* const asked = named(category);
    if (!asked || !asked->readable) return std::nullopt;
    return asked->level;
}

bool SimulatedAudioDevice::setMute(Mute mute, const NSString& category) {
    Category* const changed = named(category);
    if (!changed) return false;
    changed->level.mute = mute;
    announceLater(*category);
    return true;
}

NSString SimulatedAudioDevice::routeForCategory(const NSString& category) {
    const Category* const asked = named(category);
    return asked ? asked->route : std::nullopt;
}

void SimulatedAudioDevice::changeVolume(const std::string& category, float volume) {
    categories_[category].level.volume = fractionFrom(volume);
    announceLater(category);
}

void SimulatedAudioDevice::setReadable(const std::string& category, bool readable) {
    categories_[category].readable = readable;
}

void SimulatedAudioDevice::setRoute(const std::string& category, const NSString& route) {
    categories_[category].route = route;
}

void SimulatedAudioDevice::announceLater(const std::string& category) {
    const float heard = categories_[category].level.heard();
    NSRunLoop::mainRunLoop().performAfterDelay(
        0, [category, heard] { postEffectiveVolumeDidChange(category, heard); });
}
