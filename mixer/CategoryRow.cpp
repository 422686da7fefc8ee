#include "mixer/Skin.hpp"
#include "mixer/TarnwickView.hpp"

namespace {

using Image = std::shared_ptr<const UIImage>;

// Points, in the row's coordinates.
constexpr CGFloat margin = 20.0;
constexpr CGFloat captionY = 5.0;
constexpr CGFloat captionHeight = 15.0;
constexpr CGFloat captionFontSize = 12.0;
constexpr CGFloat sliderY = 20.0;
constexpr CGFloat sliderHeight = 30.0;
constexpr UIEdgeInsets trackCapInsets = {0.0, 9.0, 0.0, 9.0};

/// An image of the bundle, read anew each time; nullptr for no name or no such file.
Image image(const std::shared_ptr<NSBundle>& bundle, const char* name) {
    if (!bundle || !name) return nullptr;
    return UIImage::imageWithContentsOfFile(bundle->pathForResource(name, "png"));
}

Image trackImage(const std::shared_ptr<NSBundle>& bundle, const char* name) {
    const Image whole = image(bundle, name);
    return whole ? whole->resizableImageWithCapInsets(trackCapInsets) : nullptr;
}

std::shared_ptr<UILabel> newCaption(CGFloat rowWidth, const NSString& text) {
    auto caption =
        std::make_shared<UILabel>(CGRectMake(margin, captionY, rowWidth - margin, captionHeight));
    caption->setText(text);
    caption->setBackgroundColor(UIColor::clearColor());
    caption->setFont(caption->font().fontWithSize(captionFontSize));
    return caption;
}

std::shared_ptr<UISlider> newSlider(CGFloat rowWidth) {
    auto slider = std::make_shared<UISlider>(
        CGRectMake(margin, sliderY, rowWidth - 2 * margin, sliderHeight));
    slider->setMinimumValue(0.0F);
    slider->setMaximumValue(100.0F);
    slider->setValue(0.0F);
    slider->setContinuous(true);
    return slider;
}

void setImages(UISlider& slider, const Skin& skin, const std::shared_ptr<NSBundle>& bundle) {
    slider.setThumbImage(image(bundle, skin.thumb), UIControlStateNormal);
    slider.setThumbImage(image(bundle, skin.thumbHighlighted), UIControlStateHighlighted);
    slider.setMinimumValueImage(image(bundle, skin.minimumValueImage));
    slider.setMaximumValueImage(image(bundle, skin.maximumValueImage));
    slider.setMinimumTrackImage(trackImage(bundle, skin.minimumTrack), UIControlStateNormal);
    slider.setMaximumTrackImage(trackImage(bundle, skin.maximumTrack), UIControlStateNormal);
    slider.setMaximumTrackImage(trackImage(bundle, skin.maximumTrackHighlighted),
                                UIControlStateHighlighted);
}

UIColor opaque(const SkinColor& color) {
    return UIColor::colorWithRed(color.red, color.green, color.blue, 1.0);
}

}  // namespace

std::shared_ptr<UIView> TarnwickView::singleCategoryView(NSInteger categoryNumber,
                                                         const CGRect& frame,
                                                         const NSString& categoryName) {
    auto row = std::make_shared<UIView>(frame);
    const auto caption = newCaption(frame.size.width, categoryName);
    caption->setTag(captionTag(categoryNumber));
    const auto slider = newSlider(frame.size.width);
    slider->addTarget(strongSelf<TarnwickView>(), &TarnwickView::sliderValueChanged,
                      UIControlEventValueChanged);
    slider->setTag(sliderTag(categoryNumber));

    if (const Skin* skin = skinNamed(selectedSkin.value_or(""))) {
        const std::optional<SkinColor>& ownColor = skin->captionColor;
        caption->setTextColor(ownColor ? opaque(*ownColor) : textColor);
        setImages(*slider, *skin, resourcesBundle);
        if (!ownColor) {
            slider->setThumbTintColor(thumbTintColor);
            slider->setMinimumTrackTintColor(minimumTrackTintColor);
            slider->setMaximumTrackTintColor(maximumTrackTintColor);
        }
    }
    row->addSubview(caption);
    row->addSubview(slider);
    return row;
}
