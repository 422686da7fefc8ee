#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UISliderMetrics.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <algorithm>
#include <cmath>

namespace {
// Points.
constexpr CGFloat shadowBlur = 3;
constexpr CGFloat shadowDrop = 1.5;
constexpr CGFloat ringWidth = 2;
constexpr CGFloat ringInnerLine = 1;
constexpr CGFloat faintOpacity = 0.4;  // From 0 to 1.
// Of a held thumb, from 0 to 1: how much of its light it keeps, or how much a dark one gets.
constexpr double heldShade = 0.8;
constexpr double heldLight = 0.35;
constexpr double darkThumb = 0.25;  // brightness, from 0 to 1
static_assert(UISliderMetrics::aroundThumb >= shadowBlur + shadowDrop &&
              UISliderMetrics::aroundThumb >= ringWidth + ringInnerLine);

constexpr UIColor systemBlue = UIColor::colorWithRed(0, 122.0 / 255, 1, 1);
/// Lies halfway to grey on any background.
constexpr UIColor emptyTrackColor = UIColor::colorWithRed(0.5, 0.5, 0.52, 0.45);
constexpr UIColor shadowColor = UIColor::colorWithRed(0, 0, 0, 0.3);

CGFloat snapped(CGFloat at, CGFloat scale) {
    return scale > 0 ? std::round(at * scale) / scale : at;
}

/// With its corner on a device pixel, so that an image is not smeared over two.
CGRect snapped(const CGRect& rect, CGFloat scale) {
    return {{snapped(rect.origin.x, scale), snapped(rect.origin.y, scale)}, rect.size};
}

double brightness(const UIColor& color) {
    return 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue;
}

/// To be told from the colour of a thumb that is not held.
UIColor heldColor(const UIColor& color) {
    const bool dark = brightness(color) < darkThumb;
    const auto changed = [dark](double part) {
        return dark ? part + heldLight * (1 - part) : part * heldShade;
    };
    return {changed(color.red), changed(color.green), changed(color.blue), color.alpha};
}
}  // namespace

const UISlider::Image& UISlider::imageForState(const ImageByState& images) const {
    const Image& image = images[state()];
    return image ? image : images[UIControlStateNormal];
}

void UISlider::drawRect(Canvas& canvas) {
    if (isEnabled() && isValueKnown()) {
        drawParts(canvas);
    } else {
        canvas.saveWithOpacity(faintOpacity);
        drawParts(canvas);
        canvas.restore();
    }
    if (showsFocus() && !CGRectIsEmpty(thumbRect())) drawFocus(canvas);
}

void UISlider::drawParts(Canvas& canvas) const {
    drawValueImages(canvas);
    drawTrack(canvas);
    if (!CGRectIsEmpty(thumbRect())) drawThumb(canvas);
}

bool UISlider::showsFocus() const {
    return isFocused() && window()->isFocusVisible();
}

void UISlider::drawValueImages(Canvas& canvas) const {
    const CGFloat scale = canvas.scale();
    const auto draw = [&](const Image& image, const CGRect& rect) {
        if (image && canvas.isVisible(rect)) image->drawInRect(canvas, rect);
    };
    draw(minimumImage_, snapped(minimumImageRect(), scale));
    draw(maximumImage_, snapped(maximumImageRect(), scale));
}

void UISlider::drawTrack(Canvas& canvas) const {
    const CGRect track = trackRect();
    if (CGRectIsEmpty(track)) return;
    const CGRect area = paintBounds();
    // Nothing is filled by a value that is not known.
    const CGFloat border = isValueKnown() ? snapped(thumbCentre(), canvas.scale()) : area.origin.x;
    const CGRect left =
        CGRectMake(area.origin.x, area.origin.y, border - area.origin.x, area.size.height);
    const CGRect right =
        CGRectMake(border, area.origin.y, CGRectGetMaxX(area) - border, area.size.height);
    drawTrackSide(canvas, right, imageForState(maximumTrack_),
                  maximumTint_.value_or(emptyTrackColor));
    drawTrackSide(canvas, left, imageForState(minimumTrack_), minimumTint_.value_or(systemBlue));
}

/// The whole track, cut off at the thumb, so that both of its ends are round at every value.
void UISlider::drawTrackSide(Canvas& canvas, const CGRect& side, const Image& image,
                             const UIColor& color) const {
    const CGRect track = trackRect();
    if (!CGRectIntersectsRect(side, track)) return;
    const CGFloat height = image ? image->size().height : UISliderMetrics::trackHeight;
    CGRect whole = centredVertically(track.origin.x, {track.size.width, height});
    if (image) whole = snapped(whole, canvas.scale());
    if (!canvas.isVisible(CGRectIntersection(side, whole))) return;
    canvas.save();
    canvas.clip(side);
    if (image)
        image->drawInRect(canvas, whole);
    else
        canvas.fillRounded(whole, height / 2, color);
    canvas.restore();
}

std::optional<UIColor> UISlider::thumbColor() const {
    const bool showsItself = thumb_[state()] || state() == UIControlStateNormal;
    return showsItself ? thumbTint_ : heldColor(thumbTint_.value_or(UIColor::whiteColor()));
}

void UISlider::drawThumb(Canvas& canvas) const {
    const CGRect thumb = thumbRect();
    const std::optional<UIColor> color = thumbColor();
    if (const Image& image = imageForState(thumb_)) {
        image->drawInRect(canvas, snapped(thumb, canvas.scale()), color);
        return;
    }
    const CGRect circle = {{snapped(thumb.origin.x, canvas.scale()), thumb.origin.y}, thumb.size};
    const CGFloat radius = circle.size.width / 2;
    canvas.fillShadow(CGRectOffset(circle, 0, shadowDrop), radius, shadowBlur, shadowColor);
    canvas.fillRounded(circle, radius, color.value_or(UIColor::whiteColor()));
}

UIImageOutline UISlider::thumbOutline(CGFloat scale) const {
    const CGRect thumb = snapped(thumbRect(), scale);
    const Image& image = imageForState(thumb_);
    if (!image) return {thumb, thumb.size.height / 2};
    const UIImageOutline outline = image->outline(scale);
    return {CGRectOffset(outline.rect, thumb.origin.x, thumb.origin.y), outline.radius};
}

/// Around the thumb in its own shape; light beside it and coloured outside, to be seen on any
/// background and beside any track.
void UISlider::drawFocus(Canvas& canvas) const {
    const UIImageOutline thumb = thumbOutline(canvas.scale());
    const CGRect line = CGRectInset(thumb.rect, -ringInnerLine, -ringInnerLine);
    const CGRect ring = CGRectInset(line, -ringWidth, -ringWidth);
    const CGFloat radius = thumb.radius + ringInnerLine;
    canvas.strokeRounded(ring, radius + ringWidth, ringWidth, systemBlue);
    // Over the thumb's edge too, or its shadow would show between the two.
    canvas.strokeRounded(line, radius, 2 * ringInnerLine, UIColor::whiteColor());
}
