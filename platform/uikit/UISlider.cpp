#include "platform/uikit/UISlider.hpp"

#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double animationSeconds = 0.25;
constexpr CGFloat reachBesideTrack = 8;  // Points.
constexpr double smallStepPercent = 1;
constexpr double largeStepPercent = 10;

double easedInOut(double t) {
    return t * t * (3 - 2 * t);
}

bool isPercentage(std::string_view text) {
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    return text.size() > 1 && text.back() == '%' &&
           std::all_of(text.begin(), text.end() - 1, isDigit);
}

struct CaptionParts {
    NSString name;
    NSString value;
};

/// By the form of the text and not by the slider's value, so that the name is always the same.
CaptionParts captionParts(const NSString& text) {
    constexpr std::string_view separator = ": ";
    const std::size_t place = text ? text->rfind(separator) : std::string::npos;
    if (place == std::string::npos) return {text, std::nullopt};
    std::string value = text->substr(place + separator.size());
    if (!isPercentage(value) && value != "unknown") return {text, std::nullopt};
    return {text->substr(0, place), std::move(value)};
}

}  // namespace

/// Moves the thumb from one value to another. The slider owns it and lets go of it before it
/// itself goes away.
class UISlider::Animation : public UIAnimation {
 public:
    Animation(UISlider& slider, double from, double to, double start)
        : slider_(&slider), from_(from), to_(to), start_(start) {}

    void end() { slider_ = nullptr; }

    bool step(double time) override {
        if (!slider_) return false;
        const double elapsed = (time - start_) / animationSeconds;
        if (!(elapsed < 1)) {
            UISlider& slider = *slider_;
            slider.endAnimation();
            slider.showValue(to_);
            return false;
        }
        slider_->showValue(from_ + easedInOut(std::max(elapsed, 0.0)) * (to_ - from_));
        return true;
    }

 private:
    UISlider* slider_;
    double from_;
    double to_;
    double start_;
};

UISlider::UISlider(const CGRect& frame) : UIControl(frame) {}

UISlider::~UISlider() {
    endAnimation();
}

void UISlider::setMinimumValue(float value) {
    if (value == value_.minimum() || !std::isfinite(value)) return;
    value_.setMinimum(value);
    rangeChanged();
}

void UISlider::setMaximumValue(float value) {
    if (value == value_.maximum() || !std::isfinite(value)) return;
    value_.setMaximum(value);
    rangeChanged();
}

void UISlider::rangeChanged() {
    endAnimation();
    shown_ = value();
    setNeedsDisplay();
    structureChanged();
}

void UISlider::setValue(float value, Animated animated) {
    endAnimation();
    const bool changed = value_.setValue(value);
    const bool moves = animated == Animated::Yes && UIAnimator::shared().isEnabled() &&
                       !isTracking() && shown_ != this->value();
    if (moves) {
        const double now = NSRunLoop::mainRunLoop().currentTime();
        animation_ = std::make_shared<Animation>(*this, shown_, this->value(), now);
        UIAnimator::shared().add(animation_);
        // It starts with the next frame, which has to be requested.
        setNeedsDisplayInRect(movingPart());
    } else {
        showValue(this->value());
    }
    if (changed) structureChanged();
}

void UISlider::setValueKnown(bool known) {
    if (known == valueKnown_) return;
    valueKnown_ = known;
    setNeedsDisplay();
    structureChanged();
}

void UISlider::endAnimation() {
    if (!animation_) return;
    animation_->end();
    animation_.reset();
}

void UISlider::showValue(double value) {
    if (value == shown_) return;
    const CGRect before = movingPart();
    shown_ = value;
    setNeedsDisplayInRect(CGRectUnion(before, movingPart()));
}

bool UISlider::changeTo(float value) {
    endAnimation();
    const bool changed = value_.setValue(value);
    showValue(this->value());
    if (changed) structureChanged();
    return changed;
}

void UISlider::setValueFromUser(float value) {
    if (!isEnabled() || isTracking() || std::isnan(value)) return;
    if (changeTo(value)) sendActionsForControlEvents(UIControlEventValueChanged);
}

void UISlider::moveFromUser(float value) {
    if (changeTo(value) && continuous_) sendActionsForControlEvents(UIControlEventValueChanged);
}

void UISlider::stepFromUser(double percent) {
    const double range = static_cast<double>(maximumValue()) - minimumValue();
    setValueFromUser(static_cast<float>(value() + percent / 100 * range));
}

bool UISlider::isOnThumb(const CGPoint& point) const {
    const CGRect thumb = thumbRect();
    return point.x >= thumb.origin.x && point.x < CGRectGetMaxX(thumb);
}

bool UISlider::reaches(const CGPoint& point) const {
    const CGRect track = trackRect();
    if (CGRectIsEmpty(track) || CGRectIsEmpty(thumbRect()) || !pointInside(point)) return false;
    const CGRect reach = CGRectInset(track, -reachBesideTrack, 0);
    return isOnThumb(point) || (point.x >= reach.origin.x && point.x <= CGRectGetMaxX(reach));
}

bool UISlider::beginTracking(const CGPoint& point) {
    if (!reaches(point)) return false;
    valueAtPress_ = value();
    finger_ = point.x;
    if (isOnThumb(point)) {
        grip_ = point.x - thumbCentre();
        moveFromUser(animation_ ? static_cast<float>(shown_) : value());
    } else {
        grip_ = 0;
        moveFromUser(valueAtThumbCentre(point.x));
    }
    return true;
}

void UISlider::continueTracking(const CGPoint& point) {
    // A resting finger must not change the value by rounding.
    if (point.x == finger_) return;
    finger_ = point.x;
    moveFromUser(valueAtThumbCentre(point.x - grip_));
}

void UISlider::endTracking(const CGPoint& point) {
    continueTracking(point);
    if (!continuous_ && value() != valueAtPress_)
        sendActionsForControlEvents(UIControlEventValueChanged);
}

void UISlider::cancelTracking() {
    if (continuous_) return;
    // No target was told about the new value, so it is taken back.
    setValue(valueAtPress_);
}

bool UISlider::scrolled(const CGPoint& point, double steps) {
    (void)point;
    if (!isEnabled()) return false;
    stepFromUser(steps * smallStepPercent);
    return true;
}

bool UISlider::keyPressed(UIKey key) {
    if (!isEnabled()) return false;
    switch (key) {
        case UIKey::Left:
        case UIKey::Down:
            stepFromUser(-smallStepPercent);
            return true;
        case UIKey::Right:
        case UIKey::Up:
            stepFromUser(smallStepPercent);
            return true;
        case UIKey::PageDown:
            stepFromUser(-largeStepPercent);
            return true;
        case UIKey::PageUp:
            stepFromUser(largeStepPercent);
            return true;
        case UIKey::Home:
            setValueFromUser(minimumValue());
            return true;
        case UIKey::End:
            setValueFromUser(maximumValue());
            return true;
        case UIKey::Tab:
        case UIKey::BackTab:
        case UIKey::Press:
            return false;
    }
    return false;
}

bool UISlider::canBecomeFocused() const {
    return isEnabled();
}

NSString UISlider::accessibilityName() const {
    return captionParts(accessibilityLabel()).name;
}

NSString UISlider::accessibilityValue() const {
    return captionParts(accessibilityLabel()).value;
}
