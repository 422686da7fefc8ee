#include "shells/panel/ScrollBar.hpp"

#include "shells/panel/PanelLayout.hpp"

#include <algorithm>

namespace {

// Points.
constexpr CGFloat barWidth = 3;
constexpr CGFloat widthWhileHeld = 6;
constexpr CGFloat margin = 4;  // To the edge.
constexpr CGFloat shortest = 24;
// What is free of a row beside its slider, and a fingertip's height for the shortest bar.
constexpr CGFloat reach = 20;
constexpr CGFloat reachAboveAndBelow = 8;
constexpr UIColor color = {1, 1, 1, 0.35};
constexpr UIColor colorWhileHeld = {1, 1, 1, 0.6};

}  // namespace

ScrollBar::ScrollBar() {
    setHidden(true);
}

/// The panel's corners are round: the bar keeps clear of them.
CGFloat ScrollBar::track() const {
    return std::max<CGFloat>(0, extent_.opening.size.height - 2 * panelRadius);
}

void ScrollBar::show(const Extent& extent) {
    extent_ = extent;
    setHidden(!(greatestOffset() > 0));
    if (isHidden()) return;
    const CGRect& opening = extent_.opening;
    const CGFloat length =
        std::min(track(), std::max(shortest, track() * opening.size.height / extent_.whole));
    const CGFloat top = (track() - length) * extent_.offset / greatestOffset();
    setFrame(CGRectMake(CGRectGetMaxX(opening) - margin - barWidth,
                        opening.origin.y + panelRadius + top, barWidth, length));
}

bool ScrollBar::pointInside(const CGPoint& point) const {
    if (CGRectIsEmpty(bounds())) return false;
    const CGRect grasped = CGRectMake(barWidth + margin - reach, 0, reach, bounds().size.height);
    return CGRectContainsPoint(CGRectInset(grasped, 0, -reachAboveAndBelow), point);
}

void ScrollBar::drawRect(Canvas& canvas) {
    if (isHighlighted())
        canvas.fillRounded(paintBounds(), widthWhileHeld / 2, colorWhileHeld);
    else
        canvas.fillRounded(bounds(), barWidth / 2, color);
}

CGRect ScrollBar::paintBounds() const {
    return CGRectMake(barWidth - widthWhileHeld, 0, widthWhileHeld, bounds().size.height);
}

bool ScrollBar::beginTracking(const CGPoint& point) {
    grip_ = point.y;
    return true;
}

/// The bar comes along, so that what it is held by stays the same.
void ScrollBar::continueTracking(const CGPoint& point) {
    if (isHidden() || !(travel() > 0)) return;
    const CGFloat way = (point.y - grip_) * greatestOffset() / travel();
    const auto handler = dragHandler_;  // A copy: it may end this.
    if (handler) handler(std::clamp<CGFloat>(extent_.offset + way, 0, greatestOffset()));
}
