#include "mixer/TarnwickView.hpp"
#include "platform/foundation/NSLog.hpp"

#include <algorithm>
#include <cstdio>

namespace {

constexpr const char* ringtone = "Ringtone";
constexpr const char* audioVideo = "Audio/Video";

/// The first record with that name; -1 when there is none.
NSInteger positionOf(const CategoryList& categories, const NSString& categoryName) {
    const auto found = std::ranges::find_if(categories, [&](const CategoryRecord& record) {
        return categoryName && record.categoryName() == categoryName;
    });
    return found == categories.end() ? -1 : found - categories.begin();
}

std::string changeLine(const NSString& category, float volume) {
    char number[64];
    std::snprintf(number, sizeof number, "%f", static_cast<double>(volume));
    return "TW: VolumeChangedNotification for category " + describe(category) + ", new volume is " +
           number;
}

}  // namespace

void TarnwickView::receiveVolumeChangedNotification(const NSNotification& notification) {
    const NSString category =
        notification.userInfo
            .objectForKey(AVSystemController_EffectiveVolumeNotificationParameter_Category)
            .string();
    const float volume =
        notification.userInfo
            .objectForKey(AVSystemController_EffectiveVolumeNotificationParameter_Volume)
            .floatValue();
    // The line takes longer to write than the row to find, and nearly nobody reads it.
    if (enableDebugLogging) debugLog(changeLine(category, volume));
    const NSInteger number = positionOf(categories, category);
    if (number < 0) {
        NSLog("TW: unable to match category " + describe(category) +
              " to TW categories list, GUI not updated!");
        return;
    }
    const auto slider = sliderForCategory(number);
    if (bindRingerAndAVVolumes) updatePartner(category, volume);
    if (!slider)
        debugLog("TW: category " + describe(category) +
                 " not visible, no slider to update for that category");
    else if (slider->isHighlighted())
        debugLog("TW: mixer is initiating volume change event for category " + describe(category) +
                 ", do not update GUI");
    else
        updateSliderAndLabelForCategoryNum(number, volume);
}

void TarnwickView::updatePartner(const NSString& changedCategory, float volume) {
    const bool mediaChanged = changedCategory == audioVideo;
    if (!mediaChanged && changedCategory != ringtone) return;
    const std::string partnerInLog = mediaChanged ? "ringtone" : "A/V";
    // The changed category's own route, the ringer's too, although the lines speak of A/V.
    const NSString route = avs ? avs->routeForCategory(changedCategory) : std::nullopt;
    if (!hasPrefix(route, "Speaker")) {
        debugLog("TW: A/V route is not Speaker, not updating " + partnerInLog + " slider");
        return;
    }
    debugLog("TW: A/V route is Speaker, updating " + partnerInLog + " slider as well");
    updateSliderAndLabelForCategoryNum(positionOf(categories, mediaChanged ? ringtone : audioVideo),
                                       volume);
}
