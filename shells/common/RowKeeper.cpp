#include "shells/common/RowKeeper.hpp"

#include "config/CategoryList.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIView.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace shell {
namespace {

// A mixer's tags: these and the category's number.
constexpr NSInteger firstSlider = 2000;
constexpr NSInteger firstCaption = 1000;

bool mayBeRow(const std::shared_ptr<UISlider>& slider) {
    return slider->tag() >= firstSlider;
}

/// Whether the caption in the slider's row begins with the record's name: other widgets may use the
/// same tags, and the file may have changed.
bool isRowOf(const UISlider& slider, NSInteger number, const CategoryRecord& record) {
    const std::shared_ptr<UIView> row = slider.superview();
    const std::shared_ptr<UIView> caption = row ? row->viewWithTag(firstCaption + number) : nullptr;
    const NSString text = caption ? caption->accessibilityLabel() : std::nullopt;
    return text && text->starts_with(describe(record.prettyCategoryName()));
}

// A server's rounding changes a volume by less than its smallest step.
constexpr double smallestStep = 1.0 / 65536;

std::optional<float> volumeOf(const NSString& category) {
    const auto service = AVSystemController::sharedAVSystemController();
    float volume = 0;
    if (!service || !service->getVolume(volume, category)) return std::nullopt;
    return volume;
}

bool stands(const UISlider& slider, float volume) {
    const double range = double{slider.maximumValue()} - double{slider.minimumValue()};
    const double fraction = (double{slider.value()} - double{slider.minimumValue()}) / range;
    return std::abs(fraction - double{volume}) <= smallestStep;
}

std::vector<std::shared_ptr<UISlider>> slidersIn(const std::shared_ptr<UIView>& view) {
    std::vector<std::shared_ptr<UISlider>> found;
    for (const auto& element : accessibilityElements(view))
        if (auto slider = std::dynamic_pointer_cast<UISlider>(element))
            found.push_back(std::move(slider));
    return found;
}

}  // namespace

std::vector<VolumeRow> volumeRows(const std::vector<std::shared_ptr<UISlider>>& sliders) {
    if (std::ranges::none_of(sliders, mayBeRow)) return {};
    const CategoryList categories = presentCategoryList();
    std::vector<VolumeRow> rows;
    for (const auto& slider : sliders) {
        if (!mayBeRow(slider)) continue;
        const NSInteger number = slider->tag() - firstSlider;
        if (number >= static_cast<NSInteger>(categories.size())) continue;
        const CategoryRecord& record = categories[static_cast<std::size_t>(number)];
        if (isRowOf(*slider, number, record)) rows.push_back({slider, record.categoryName()});
    }
    std::ranges::stable_sort(rows, {}, &VolumeRow::category);
    return rows;
}

RowKeeper::~RowKeeper() {
    end();
}

void RowKeeper::follow(const std::shared_ptr<UIView>& view) {
    const auto sliders = slidersIn(view);
    const bool areTheSame = std::ranges::equal(
        sliders, sliders_,
        [](const auto& now, const auto& before) { return now == before.lock(); });
    if (areTheSame) return tellWhetherKnown();
    end();
    if (sliders.empty()) return;
    rows_ = volumeRows(sliders);
    begin(sliders);
    tellWhetherKnown();
}

void RowKeeper::begin(const std::vector<std::shared_ptr<UISlider>>& sliders) {
    constexpr unsigned events = UIControlEventValueChanged | UIControlEventTouchUpInside |
                                UIControlEventTouchUpOutside | UIControlEventTouchCancel;
    observer_ = std::make_shared<Observer>();
    sliders_.assign(sliders.begin(), sliders.end());
    for (const auto& slider : sliders)
        slider->addAction(observer_, events, [this](const std::shared_ptr<UIControl>& sender) {
            moved(std::static_pointer_cast<UISlider>(sender));
        });
    if (rows_.empty()) return;
    NSNotificationCenter::defaultCenter().add(
        observer_, [this](const NSNotification& notification) { volumeAnnounced(notification); },
        AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
}

void RowKeeper::end() {
    NSNotificationCenter::defaultCenter().removeObserver(observer_.get());
    observer_.reset();
    sliders_.clear();
    rows_.clear();
    moved_.clear();
    isReadingPostponed_ = false;
    settling_.cancel();
}

bool RowKeeper::isAnyHeld() const {
    return std::ranges::any_of(sliders_, [](const auto& each) {
        const auto slider = each.lock();
        return slider && slider->isTracking();
    });
}

void RowKeeper::readAgain() {
    tellWhetherKnown();
    isReadingPostponed_ = isAnyHeld();
    if (isReadingPostponed_) return;
    moved_.clear();
    settling_.cancel();
    readRows_();
}

/// A held slider is handled at its release.
void RowKeeper::moved(const std::shared_ptr<UISlider>& slider) {
    if (slider->isTracking()) return;
    moved_.emplace_back(slider);
    settling_.start(0, [this] { settleNext(); });
}

// Settles one slider in each turn of the main loop and schedules the next one first, because an
// observer may throw or destroy this object.
void RowKeeper::settleNext() {
    if (isReadingPostponed_ && !isAnyHeld()) return readAgain();
    const auto slider = moved_.front().lock();
    moved_.pop_front();
    if (!moved_.empty()) settling_.start(0, [this] { settleNext(); });
    if (slider && !slider->isTracking()) settle(*slider);
}

void RowKeeper::settle(const UISlider& slider) {
    const auto row = std::ranges::find_if(
        rows_, [&](const VolumeRow& each) { return each.slider.lock().get() == &slider; });
    if (row == rows_.end()) return;
    const NSString category = row->category;
    const std::optional<float> volume = volumeOf(category);
    if (volume && stands(slider, *volume)) return;
    const std::weak_ptr<Observer> alive = observer_;
    if (volume) postEffectiveVolumeDidChange(category, *volume);
    // A second row of the same category gets no notification.
    if (!alive.expired() && !(volume && stands(slider, *volume))) readAgain();
}

void RowKeeper::volumeAnnounced(const NSNotification& notification) {
    const NSString category =
        notification.userInfo
            .objectForKey(AVSystemController_EffectiveVolumeNotificationParameter_Category)
            .string();
    auto row = std::ranges::lower_bound(rows_, category, {}, &VolumeRow::category);
    for (; row != rows_.end() && row->category == category; ++row)
        if (const auto slider = row->slider.lock())
            slider->setValueKnown(volumeOf(category).has_value());
}

void RowKeeper::tellWhetherKnown() {
    for (const VolumeRow& row : rows_)
        if (const auto slider = row.slider.lock())
            slider->setValueKnown(volumeOf(row.category).has_value());
}

}  // namespace shell
