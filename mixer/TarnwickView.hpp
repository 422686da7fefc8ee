#pragma once

#include "config/CategoryList.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSBundle.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/uikit/UIImageView.hpp"
#include "platform/uikit/UILabel.hpp"
#include "platform/uikit/UISlider.hpp"

#include <concepts>
#include <memory>

/// The height of a row in points. Its caption lies above its slider.
inline constexpr double rowHeight = 50.0;

/// How a category's caption and slider are found in the mixer: by tags made from its number, its
/// position in the whole list.
constexpr NSInteger captionTag(NSInteger categoryNumber) {
    return 1000 + categoryNumber;
}
constexpr NSInteger sliderTag(NSInteger categoryNumber) {
    return 2000 + categoryNumber;
}
constexpr NSInteger categoryNumberOfSlider(NSInteger tag) {
    return tag - 2000;
}

/// The mixer: one row for each visible category, its caption (tag 1000 + the category's number)
/// above its slider (tag 2000 + number). It fills itself from the volume service and follows every
/// change that the service announces. Main thread.
///
/// Made with std::make_shared<TarnwickView>(frame), put into its superview and then assembled.
/// Whoever drops the last reference unregisters it from the notification centre first.
class TarnwickView : public UIView {
 public:
    using UIView::UIView;
    /// "dealloc": writes a line when debug logging is on.
    ~TarnwickView() override;
    std::string_view className() const override { return "TarnwickView"; }

    /// There is no background image: whatever is given is ignored.
    void setBackgroundImage(const std::shared_ptr<const UIImage>& image);
    void layoutSubviews() override;
    /// Reads the settings file and the device kind into the variables below.
    void loadSettings();
    /// Reads the category file into `categories`; writes it with the initial list if there is no
    /// readable one. Needs loadSettings() before it.
    void loadCategories();
    /// Assembles the mixer: settings, categories, service, rows as wide as the superview, volumes,
    /// registration. Clears nothing: an assembled view is cleared by removeAll() before.
    void loadFullViewWithResourcesBundle(const std::shared_ptr<NSBundle>& bundle);
    /// Takes away every subview and every registration; the variables stay.
    void removeAll();
    /// The service's announcement of a volume. Throws std::out_of_range when ringer and media are
    /// bound and the list lacks the partner.
    void receiveVolumeChangedNotification(const NSNotification& notification);
    /// A new row for the category: its frame in this view's coordinates, captioned with the name
    /// alone. The caller adds it.
    std::shared_ptr<UIView> singleCategoryView(NSInteger categoryNumber, const CGRect& frame,
                                               const NSString& categoryName);
    /// The action of the sliders: rewrites the caption and sends the volume.
    void sliderValueChanged(const std::shared_ptr<UISlider>& sender);
    /// Shows a volume (0 to 1) on the category's row, if it has one. Throws std::out_of_range for a
    /// number that is no position in the list.
    void updateSliderAndLabelForCategoryNum(NSInteger categoryNumber, float value);
    /// Fills every row from the service.
    void updateValues();

 protected:
    std::shared_ptr<UIImageView> _backgroundImageView;
    CategoryList categories;
    std::shared_ptr<AVSystemController> avs;
    std::shared_ptr<NSBundle> resourcesBundle;
    bool bindRingerAndAVVolumes = false;
    std::optional<UIColor> thumbTintColor;
    std::optional<UIColor> minimumTrackTintColor;
    std::optional<UIColor> maximumTrackTintColor;
    std::optional<UIColor> textColor;
    NSString selectedSkin;
    bool displayPercentage = false;
    bool isIpad = false;
    bool isIpod = false;
    bool enableDebugLogging = false;
    float widgetWidth = 0;  ///< Points, in single precision on every processor.

 private:
    std::shared_ptr<UISlider> sliderForCategory(NSInteger categoryNumber);
    /// `slider` is the category's own, nullptr if it has none.
    std::shared_ptr<UILabel> captionForCategory(NSInteger categoryNumber,
                                                const std::shared_ptr<UISlider>& slider);
    void placeRows();
    void updateRow(NSInteger categoryNumber, const CategoryRecord& record);
    void updatePartner(const NSString& changedCategory, float volume);
    void debugLog(const std::string& line) const;
    /// The same for a line that is worth making only if it is written.
    void debugLog(const std::invocable auto& makeLine) const {
        if (enableDebugLogging) debugLog(makeLine());
    }
};
