#include "platform/celestial/AVSystemController.hpp"

#include "platform/foundation/NSNotificationCenter.hpp"

#include <algorithm>
#include <utility>

namespace {
std::shared_ptr<AVSystemController>& sharedController() {
    static std::shared_ptr<AVSystemController> controller;
    return controller;
}
}  // namespace

std::shared_ptr<AVSystemController> AVSystemController::sharedAVSystemController() {
    return sharedController();
}

void AVSystemController::setSharedAVSystemController(
    std::shared_ptr<AVSystemController> controller) {
    sharedController() = std::move(controller);
}

bool AVSystemController::stepVolumeBy(double step, const NSString& category) {
    const std::optional<Level> level = levelOf(category);
    if (!level) return false;
    const auto wanted = static_cast<float>(std::clamp(double{level->volume} + step, 0.0, 1.0));
    if (wanted != level->volume) return setVolumeTo(wanted, category);
    return level->mute == Mute::Off || setMute(Mute::Off, category);
}

bool AVSystemController::toggleMute(const NSString& category) {
    const std::optional<Level> level = levelOf(category);
    return level && setMute(level->mute == Mute::On ? Mute::Off : Mute::On, category);
}

void postEffectiveVolumeDidChange(const NSString& category, float volume) {
    PropertyValue::Dictionary userInfo;
    userInfo.reserve(2);
    if (category)
        userInfo.emplace_back(AVSystemController_EffectiveVolumeNotificationParameter_Category,
                              PropertyValue(*category));
    userInfo.emplace_back(AVSystemController_EffectiveVolumeNotificationParameter_Volume,
                          PropertyValue(static_cast<double>(volume)));
    NSNotificationCenter::defaultCenter().postNotificationName(
        AVSystemController_EffectiveVolumeDidChangeNotification, nullptr,
        PropertyValue(std::move(userInfo)));
}
