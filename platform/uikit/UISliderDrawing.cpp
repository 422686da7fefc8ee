#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <algorithm>
#include <cmath>

namespace {

// Points.
constexpr CGFloat trackHeight = 4;
constexpr CGFloat thumbDiameter = 27;
constexpr CGFloat thumbOverhang = 2;  ///< Of the thumb past the ends of the track.
constexpr CGFloat imageGap = 8;       ///< Between an image and the track.
constexpr CGFloat aroundThumb = 5;    ///< What its shadow and the focus ring need.
/// What an image needs around the thumb, whose corner is drawn on a device pixel.
constexpr CGFloat aroundThumbImage = 1;
constexpr CGFloat shadowBlur = 3;
constexpr CGFloat shadowDrop = 1.5;
constexpr CGFloat ringWidth = 2;
constexpr CGFloat ringInnerLine = 1;
constexpr CGFloat faintOpacity = 0.4;  // From 0 to 1.
// Of a held thumb, from 0 to 1: how much of its light it keeps, or how much a dark one gets.
constexpr double heldShade = 0.8;
constexpr double heldLight = 0.35;
constexpr double darkThumb = 0.25;  // brightness, from 0 to 1
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

// Images and tints

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

const UISlider::Image& UISlider::imageForState(const ImageByState& images) const {
    const Image& image = images[state()];
    return image ? image : images[UIControlStateNormal];
}

// Geometry

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

// The least that is needed: with more, every move of the thumb would repaint the neighbouring rows.
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

// Drawing

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
    const CGFloat height = image ? image->size().height : trackHeight;
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
