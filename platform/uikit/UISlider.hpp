#pragma once

#include "platform/uikit/SliderValue.hpp"
#include "platform/uikit/UIAnimator.hpp"
#include "platform/uikit/UIControl.hpp"
#include "platform/uikit/UIImage.hpp"

#include <array>

enum class Animated { No, Yes };

/// A horizontal slider: a track with a thumb, and an optional image at either end. Range 0 to 1,
/// value 0 and continuous at first.
///
///     auto slider = std::make_shared<UISlider>(CGRectMake(20, 20, 280, 30));
///     slider->setMaximumValue(100);
///     slider->addTarget(self, &Mixer::sliderMoved, UIControlEventValueChanged);
///
/// A change by the user (touch, wheel, key, assistive technology) sends value-changed; setValue()
/// never does. A press on the thumb drags it; one on the track, or at most 8 points beside it,
/// brings the thumb there and drags it on; one on the images at the ends does nothing, so that no
/// slip of the finger leaps to full volume.
class UISlider : public UIControl {
 public:
    explicit UISlider(const CGRect& frame = {});
    ~UISlider() override;
    std::string_view className() const override { return "UISlider"; }

    // Value -------------------------------------------------------------------------------------

    float minimumValue() const { return value_.minimum(); }
    float maximumValue() const { return value_.maximum(); }
    float value() const { return value_.value(); }
    void setMinimumValue(float value);
    void setMaximumValue(float value);
    /// Kept within the range. Animated: value() is the new one at once and the thumb moves there
    /// in 0.25 s. Not animated: an animation under way ends.
    void setValue(float value, Animated animated = Animated::No);
    bool isAnimating() const { return animation_ != nullptr; }

    /// Whether the value is known; it is by default. A slider with an unknown value, such as that
    /// of a volume that cannot be read, is faint, has no filled track, and is insensitive for
    /// assistive technology. It still responds to touches, wheel and keys: the volume may be
    /// readable again by then, and its targets decide.
    void setValueKnown(bool known);
    bool isValueKnown() const { return valueKnown_; }

    bool isContinuous() const { return continuous_; }
    /// Not continuous: value-changed is sent once, when the finger leaves.
    void setContinuous(bool continuous) { continuous_ = continuous; }

    /// A change by the user by other means than a touch: sets the value and sends value-changed if
    /// it is another one. Ignored while the slider is disabled or held by a finger, and for what is
    /// not a number.
    void setValueFromUser(float value);
    /// By `percent` of the range, up or down.
    void stepFromUser(double percent);

    // Look --------------------------------------------------------------------------------------

    using Image = std::shared_ptr<const UIImage>;
    /// nullptr leaves the platform's own look. A highlighted slider without an image of its own
    /// for that state shows the normal one; its thumb darker, or lighter if it is dark.
    void setThumbImage(const Image& image, UIControlState state);
    void setMinimumTrackImage(const Image& image, UIControlState state);
    void setMaximumTrackImage(const Image& image, UIControlState state);
    void setMinimumValueImage(const Image& image);
    void setMaximumValueImage(const Image& image);
    /// What was set for exactly that state.
    Image thumbImage(UIControlState state) const { return thumb_[state]; }
    Image minimumTrackImage(UIControlState state) const { return minimumTrack_[state]; }
    Image maximumTrackImage(UIControlState state) const { return maximumTrack_[state]; }
    Image minimumValueImage() const { return minimumImage_; }
    Image maximumValueImage() const { return maximumImage_; }

    /// A tint colours the platform's own track or thumb, and multiplies a thumb image. Empty
    /// leaves the default look.
    void setThumbTintColor(const std::optional<UIColor>& color);
    void setMinimumTrackTintColor(const std::optional<UIColor>& color);
    void setMaximumTrackTintColor(const std::optional<UIColor>& color);
    std::optional<UIColor> thumbTintColor() const { return thumbTint_; }
    std::optional<UIColor> minimumTrackTintColor() const { return minimumTint_; }
    std::optional<UIColor> maximumTrackTintColor() const { return maximumTint_; }

    /// Geometry in own coordinates; with the value that is shown now, during an animation one on
    /// the way. A slider too narrow for its parts gives empty rectangles, never negative ones.
    CGRect trackRect() const;
    /// Whether a press at that point (own coordinates) moves the thumb; one beside it does nothing.
    bool reaches(const CGPoint& point) const;
    CGRect thumbRect() const;
    CGRect minimumImageRect() const;
    CGRect maximumImageRect() const;

    /// Disabled, or without a known value, all of it but the focus is faint.
    void drawRect(Canvas& canvas) override;
    CGRect paintBounds() const override;
    bool scrolled(const CGPoint& point, double steps) override;
    bool keyPressed(UIKey key) override;
    bool canBecomeFocused() const override;

    // Accessibility -----------------------------------------------------------------------------

    UIAccessibilityRole accessibilityRole() const override { return UIAccessibilityRole::Slider; }
    /// The caption before it without the value: "Media (Speaker)" of "Media (Speaker): 40%" and
    /// "Calls" of "Calls: unknown".
    NSString accessibilityName() const override;
    /// What the caption says in the value's place, "40%" or "unknown"; nil where it says nothing.
    NSString accessibilityValue() const;
    bool isAccessibilityEnabled() const override { return isEnabled() && isValueKnown(); }

 protected:
    bool beginTracking(const CGPoint& point) override;
    void continueTracking(const CGPoint& point) override;
    void endTracking(const CGPoint& point) override;
    void cancelTracking() override;

 private:
    class Animation;
    using ImageByState = std::array<Image, 2>;
    /// Where the thumb's centre can be; `to` is less than `from` when there is no room for it.
    struct Travel {
        CGFloat from;
        CGFloat to;
    };

    const Image& imageForState(const ImageByState& images) const;
    CGFloat centreY() const;
    CGRect centredVertically(CGFloat x, const CGSize& size) const;
    CGSize thumbSize() const;
    Travel thumbTravel() const;
    CGFloat thumbCentre() const;
    bool isOnThumb(const CGPoint& point) const;
    float valueAtThumbCentre(CGFloat x) const;
    CGRect movingPart() const;
    CGFloat roomAroundThumb() const;
    bool showsFocus() const;
    void setImage(Image& slot, const Image& image);
    void setTint(std::optional<UIColor>& slot, const std::optional<UIColor>& color);
    void rangeChanged();
    void showValue(double value);
    void endAnimation();
    bool changeTo(float value);
    void moveFromUser(float value);
    void drawParts(Canvas& canvas) const;
    void drawValueImages(Canvas& canvas) const;
    void drawTrack(Canvas& canvas) const;
    void drawTrackSide(Canvas& canvas, const CGRect& side, const Image& image,
                       const UIColor& color) const;
    /// With which its image is multiplied, or which it has without one.
    std::optional<UIColor> thumbColor() const;
    void drawThumb(Canvas& canvas) const;
    UIImageOutline thumbOutline(CGFloat scale) const;
    void drawFocus(Canvas& canvas) const;

    SliderValue value_;
    bool valueKnown_ = true;
    bool continuous_ = true;
    CGFloat grip_ = 0;    ///< From the thumb's centre to the finger, points.
    CGFloat finger_ = 0;  ///< Where it was last, own coordinates.
    float valueAtPress_ = 0;
    std::shared_ptr<Animation> animation_;
    double shown_ = 0;  ///< The value that the thumb stands at.

    ImageByState thumb_;
    ImageByState minimumTrack_;
    ImageByState maximumTrack_;
    Image minimumImage_;
    Image maximumImage_;
    std::optional<UIColor> thumbTint_;
    std::optional<UIColor> minimumTint_;
    std::optional<UIColor> maximumTint_;
};
