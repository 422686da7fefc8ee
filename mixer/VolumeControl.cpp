#include "mixer/Caption.hpp"
#include "mixer/RowTags.hpp"
#include "mixer/TarnwickView.hpp"
#include "mixer/Volume.hpp"
#include "platform/foundation/NSLog.hpp"

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
    return row ? std::dynamic_pointer_cast<UILabel>(row->viewWithTag(tag)) : nullptr;
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
    if (enableDebugLogging) NSLog("TW: updating category " + describe(name));
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
