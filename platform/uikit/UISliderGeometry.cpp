#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UISliderMetrics.hpp"

#include <algorithm>
#include <cmath>

using namespace UISliderMetrics;

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
        height = std::max(height, image ? image->size().height : trackHeight);
    }
    return centredVertically(left, {right - left, height});
}

CGSize UISlider::thumbSize() const {
    const Image& image = imageForState(thumb_);
    return image ? image->size() : CGSize{thumbDiameter, thumbDiameter};
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
    if (CGRectIsEmpty(thumb)) return bounds();
    const CGRect track = trackRect();
    const CGRect border =
        CGRectMake(thumb.origin.x, track.origin.y, thumb.size.width, track.size.height);
    const CGFloat room = roomAroundThumb();
    return CGRectUnion(CGRectInset(thumb, -room, -room), border);
}

// No more than it needs, or every move of the thumb would paint the rows above and below too.
CGFloat UISlider::roomAroundThumb() const {
    const bool hasImage = thumb_[UIControlStateNormal] != nullptr;
    return hasImage && !showsFocus() ? aroundThumbImage : aroundThumb;
}

CGRect UISlider::paintBounds() const {
    CGFloat height = thumbDiameter;
    for (const ImageByState* images : {&thumb_, &minimumTrack_, &maximumTrack_})
        for (const Image& image : *images)
            if (image) height = std::max(height, image->size().height);
    for (const Image* image : {&minimumImage_, &maximumImage_})
        if (*image) height = std::max(height, (*image)->size().height);
    const CGRect parts = centredVertically(0, {bounds().size.width, height});
    if (CGRectIsEmpty(bounds())) return {};
    const CGFloat room = roomAroundThumb();
    return CGRectUnion(bounds(), CGRectInset(parts, -room, -room));
}
