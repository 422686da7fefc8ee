#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <algorithm>
#include <cmath>

namespace {
// Points.
constexpr CGFloat platformTrackHeight = 4;
constexpr CGFloat platformThumbSize = 27;
constexpr CGFloat thumbOverhang = 2;  // Of the thumb past the ends of the track.
constexpr CGFloat imageGap = 8;       // Between an image and the track.
constexpr CGFloat shadowBlur = 3;
constexpr CGFloat shadowDrop = 1.5;
constexpr CGFloat ringWidth = 2;
constexpr CGFloat ringInnerLine = 1;
constexpr CGFloat ringImageRadius = 8;
constexpr CGFloat aroundThumb = 5;  // What shadow and ring need.
static_assert(aroundThumb >= shadowBlur + shadowDrop && aroundThumb >= ringWidth + ringInnerLine);

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
}  // namespace

CGFloat UISlider::centreY() const {
    return std::round(bounds().size.height) / 2;
}

CGRect UISlider::centredVertically(CGFloat x, const CGSize& size) const {
    return {{x, centreY() - size.height / 2}, size};
}

CGRect UISlider::minimumImageRect() const {
    if (!minimumImage_ || CGRectIsEmpty(bounds())) return {};
    const CGSize size = minimumImage_->size();
    return size.width <= bounds().size.width ? centredVertically(0, size) : CGRect{};
}

CGRect UISlider::maximumImageRect() const {
    if (!maximumImage_ || CGRectIsEmpty(bounds())) return {};
    const CGSize size = maximumImage_->size();
    const CGFloat left = bounds().size.width - size.width;
    return left >= CGRectGetMaxX(minimumImageRect()) ? centredVertically(left, size) : CGRect{};
}

CGRect UISlider::trackRect() const {
    if (CGRectIsEmpty(bounds())) return {};
    const CGFloat left =
        minimumImage_ ? CGRectGetMaxX(minimumImageRect()) + imageGap : thumbOverhang;
    const CGFloat right =
        bounds().size.width -
        (maximumImage_ ? maximumImageRect().size.width + imageGap : thumbOverhang);
    if (!(right > left)) return {};
    CGFloat height = 0;
    for (const ImageByState* images : {&minimumTrack_, &maximumTrack_}) {
        const Image& image = imageForState(*images);
        height = std::max(height, image ? image->size().height : platformTrackHeight);
    }
    return centredVertically(left, {right - left, height});
}

CGSize UISlider::thumbSize() const {
    const Image& image = imageForState(thumb_);
    return image ? image->size() : CGSize{platformThumbSize, platformThumbSize};
}

UISlider::Travel UISlider::thumbTravel() const {
    const CGRect track = trackRect();
    const CGFloat inset = thumbSize().width / 2 - thumbOverhang;
    if (CGRectIsEmpty(track)) return {0, -1};
    return {track.origin.x + inset, CGRectGetMaxX(track) - inset};
}

CGFloat UISlider::thumbCentre() const {
    const auto fraction = static_cast<CGFloat>(value_.fraction(shown_));
    const CGRect track = trackRect();
    const Travel travel = thumbTravel();
    if (travel.to < travel.from) return track.origin.x + fraction * track.size.width;
    return travel.from + fraction * (travel.to - travel.from);
}

float UISlider::valueAtThumbCentre(CGFloat x) const {
    const Travel travel = thumbTravel();
    if (!(travel.to > travel.from)) return value();
    return value_.valueAtFraction((x - travel.from) / (travel.to - travel.from));
}

CGRect UISlider::thumbRect() const {
    const Travel travel = thumbTravel();
    if (travel.to < travel.from) return {};
    const CGSize size = thumbSize();
    return centredVertically(thumbCentre() - size.width / 2, size);
}

CGRect UISlider::movingPart() const {
    const CGRect thumb = thumbRect();
    return CGRectIsEmpty(thumb) ? bounds() : CGRectInset(thumb, -aroundThumb, -aroundThumb);
}

CGRect UISlider::paintBounds() const {
    CGFloat height = platformThumbSize;
    for (const ImageByState* images : {&thumb_, &minimumTrack_, &maximumTrack_})
        for (const Image& image : *images)
            if (image) height = std::max(height, image->size().height);
    for (const Image* image : {&minimumImage_, &maximumImage_})
        if (*image) height = std::max(height, (*image)->size().height);
    const CGRect parts = centredVertically(0, {bounds().size.width, height});
    if (CGRectIsEmpty(bounds())) return {};
    return CGRectUnion(bounds(), CGRectInset(parts, -aroundThumb, -aroundThumb));
}

const UISlider::Image& UISlider::imageForState(const ImageByState& images) const {
    const Image& image = images[state()];
    return image ? image : images[UIControlStateNormal];
}

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

void UISlider::drawRect(Canvas& canvas) {
    drawValueImages(canvas);
    drawTrack(canvas);
    if (CGRectIsEmpty(thumbRect())) return;
    if (isFocused() && window()->isFocusVisible()) drawFocus(canvas);
    drawThumb(canvas);
}

void UISlider::drawValueImages(Canvas& canvas) const {
    const CGFloat scale = canvas.scale();
    if (minimumImage_) minimumImage_->drawInRect(canvas, snapped(minimumImageRect(), scale));
    if (maximumImage_) maximumImage_->drawInRect(canvas, snapped(maximumImageRect(), scale));
}

void UISlider::drawTrack(Canvas& canvas) const {
    const CGRect track = trackRect();
    if (CGRectIsEmpty(track)) return;
    const CGFloat border = snapped(thumbCentre(), canvas.scale());
    const CGRect area = paintBounds();
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
    const CGFloat height = image ? image->size().height : platformTrackHeight;
    const CGRect whole = centredVertically(track.origin.x, {track.size.width, height});
    canvas.save();
    canvas.clip(side);
    if (image)
        image->drawInRect(canvas, snapped(whole, canvas.scale()));
    else
        canvas.fillRounded(whole, height / 2, color);
    canvas.restore();
}

void UISlider::drawThumb(Canvas& canvas) const {
    const CGRect thumb = thumbRect();
    if (const Image& image = imageForState(thumb_)) {
        image->drawInRect(canvas, snapped(thumb, canvas.scale()), thumbTint_);
        return;
    }
    const CGRect circle = {{snapped(thumb.origin.x, canvas.scale()), thumb.origin.y}, thumb.size};
    const CGFloat radius = circle.size.width / 2;
    canvas.fillShadow(CGRectOffset(circle, 0, shadowDrop), radius, shadowBlur, shadowColor);
    canvas.fillRounded(circle, radius, thumbTint_.value_or(UIColor::whiteColor()));
}

void UISlider::drawFocus(Canvas& canvas) const {
    const CGRect thumb = snapped(thumbRect(), canvas.scale());
    const CGRect line = CGRectInset(thumb, -ringInnerLine, -ringInnerLine);
    const CGRect ring = CGRectInset(line, -ringWidth, -ringWidth);
    const bool round = imageForState(thumb_) == nullptr;
    const CGFloat radius = round ? ring.size.height / 2 : ringImageRadius;
    canvas.strokeRounded(ring, radius, ringWidth, systemBlue);
    canvas.strokeRounded(line, radius - ringWidth, ringInnerLine, UIColor::whiteColor());
}
