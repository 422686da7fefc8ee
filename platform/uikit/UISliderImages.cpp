#include "platform/uikit/UISlider.hpp"

void UISlider::setImage(Image& slot, const Image& image) {
    if (slot == image) return;
    slot = image;
    paintBoundsChanged();
}

void UISlider::setThumbImage(const Image& image, UIControlState state) {
    setImage(thumb_[state], image);
}

void UISlider::setMinimumTrackImage(const Image& image, UIControlState state) {
    setImage(minimumTrack_[state], image);
}

void UISlider::setMaximumTrackImage(const Image& image, UIControlState state) {
    setImage(maximumTrack_[state], image);
}

void UISlider::setMinimumValueImage(const Image& image) {
    setImage(minimumImage_, image);
}

void UISlider::setMaximumValueImage(const Image& image) {
    setImage(maximumImage_, image);
}

void UISlider::setTint(std::optional<UIColor>& slot, const std::optional<UIColor>& color) {
    if (slot == color) return;
    slot = color;
    setNeedsDisplay();
}

void UISlider::setThumbTintColor(const std::optional<UIColor>& color) {
    setTint(thumbTint_, color);
}

void UISlider::setMinimumTrackTintColor(const std::optional<UIColor>& color) {
    setTint(minimumTint_, color);
}

void UISlider::setMaximumTrackTintColor(const std::optional<UIColor>& color) {
    setTint(maximumTint_, color);
}
