#include "platform/celestial/SimulatedAudioDevice.hpp"

#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>

namespace {
float fractionFrom(float volume) {
    return volume > 0 ? std::min(volume, 1.0F) : 0.0F;  // Not a number counts as silence.
}
}  // namespace

SimulatedAudioDevice::SimulatedAudioDevice() {
    for (const std::string_view name : AudioCategory::all)
        categories_.emplace(name, Category{});
}

SimulatedAudioDevice::Category* SimulatedAudioDevice::named(const NSString& category) {
    const auto found = category ? categories_.find(*category) : categories_.end();
    return found == categories_.end() ? nullptr : &found->second;
}

bool SimulatedAudioDevice::change(const Change& change, const NSString& category) {
    Category* const changed = named(category);
    if (!changed) return false;
    if (change.volume) changed->level.volume = fractionFrom(*change.volume);
    if (change.mute) changed->level.mute = *change.mute;
    announceLater(*category);
    return true;
}

std::optional<AVSystemController::Level> SimulatedAudioDevice::levelOf(const NSString& category) {
    const Category* const asked = named(category);
    if (!asked || !asked->readable) return std::nullopt;
    return asked->level;
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
