#include "mixer/Caption.hpp"
#include "mixer/TarnwickView.hpp"
#include "platform/foundation/NSLog.hpp"

#include <algorithm>
#include <cstdio>

namespace {
Percentage shownIf(bool displayPercentage) {
    return displayPercentage ? Percentage::Shown : Percentage::Hidden;
}
}  // namespace

std::shared_ptr<UISlider> TarnwickView::sliderForCategory(NSInteger categoryNumber) {
    return std::dynamic_pointer_cast<UISlider>(viewWithTag(sliderTag(categoryNumber)));
}

std::shared_ptr<UILabel> TarnwickView::captionForCategory(NSInteger categoryNumber,
                                                          const std::shared_ptr<UISlider>& slider) {
    const NSInteger tag = captionTag(categoryNumber);
    if (tag < sliderTag(0)) return std::dynamic_pointer_cast<UILabel>(viewWithTag(tag));
    // From the thousandth category on, a caption's tag is also that of an earlier slider; within
    // its own row it is the only one.
    const auto row = slider ? slider->superview() : nullptr;
    const auto views = row ? row->subviews() : std::vector<std::shared_ptr<UIView>>();
    const auto found = std::ranges::find(views, tag, [](const auto& view) { return view->tag(); });
    return found == views.end() ? nullptr : std::dynamic_pointer_cast<UILabel>(*found);
}

void TarnwickView::sliderValueChanged(const std::shared_ptr<UISlider>& sender) {
    const NSInteger number = categoryNumberOfSlider(sender->tag());
    const auto caption = captionForCategory(number, sender);
    const CategoryRecord record = categories.at(static_cast<std::size_t>(number));
    const std::string title = captionTitle(record, avs.get());
    if (caption) caption->setText(captionText(title, sender->value(), shownIf(displayPercentage)));
    if (avs) avs->setVolumeTo(fractionFromPercent(sender->value()), record.categoryName());
}

void TarnwickView::updateSliderAndLabelForCategoryNum(NSInteger categoryNumber, float value) {
    const float percent = percentFromFraction(value);
    const auto slider = sliderForCategory(categoryNumber);
    const auto caption = captionForCategory(categoryNumber, slider);
    const CategoryRecord record = categories.at(static_cast<std::size_t>(categoryNumber));
    const std::string title = captionTitle(record, avs.get());
    if (caption) caption->setText(captionText(title, percent, shownIf(displayPercentage)));
    if (slider && slider->value() != percent) slider->setValue(percent);
}

void TarnwickView::updateValues() {
    if (!avs) avs = AVSystemController::sharedAVSystemController();
    for (std::size_t i = 0; i < categories.size(); ++i) {
        const CategoryRecord& record = categories[i];
        if (record.visible()) updateRow(static_cast<NSInteger>(i), record);
    }
}

void TarnwickView::updateRow(NSInteger categoryNumber, const CategoryRecord& record) {
    const auto slider = sliderForCategory(categoryNumber);
    const auto caption = captionForCategory(categoryNumber, slider);
    const NSString name = record.categoryName();
    debugLog([&] { return "TW: updating category " + describe(name); });
    float volume = 0;
    const bool readable = avs && avs->getVolume(volume, name);
    const std::string title = captionTitle(record, avs.get());
    if (!readable) {
        if (slider) slider->setValue(0, Animated::Yes);
        if (caption) caption->setText(unknownCaptionText(title));
        return;
    }
    const float percent = percentFromFraction(volume);
    if (slider) slider->setValue(percent, Animated::No);
    if (caption) caption->setText(captionText(title, percent, shownIf(displayPercentage)));
}

namespace {

using AudioCategory::audioVideo;
using AudioCategory::ringtone;

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
    debugLog([&] { return changeLine(category, volume); });
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
