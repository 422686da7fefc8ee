#include "platform/celestial/AVSystemController.hpp"

#include "platform/foundation/NSNotificationCenter.hpp"

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
