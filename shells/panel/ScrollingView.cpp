#include "shells/panel/ScrollingView.hpp"

#include "shells/panel/PanelLayout.hpp"

#include <algorithm>
#include <cmath>

namespace shell {
namespace {

// Points.
constexpr CGFloat barWidth = 3;
constexpr CGFloat widthWhileHeld = 6;
constexpr CGFloat barMargin = 4;  // To the edge.
constexpr CGFloat shortest = 24;
// The reach beside the bar that is free of sliders, and a fingertip's height for the shortest bar.
constexpr CGFloat reach = 20;
constexpr CGFloat reachAboveAndBelow = 8;
constexpr UIColor color = {1, 1, 1, 0.35};
constexpr UIColor colorWhileHeld = {1, 1, 1, 0.6};

constexpr CGFloat wheelStep = 50;  // Points.

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
    setFrame(CGRectMake(CGRectGetMaxX(opening) - barMargin - barWidth,
                        opening.origin.y + panelRadius + top, barWidth, length));
}

bool ScrollBar::pointInside(const CGPoint& point) const {
    if (CGRectIsEmpty(bounds())) return false;
    const CGRect grasped = CGRectMake(barWidth + barMargin - reach, 0, reach, bounds().size.height);
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

/// The bar follows the finger, which keeps its place on it.
void ScrollBar::continueTracking(const CGPoint& point) {
    if (isHidden() || !(travel() > 0)) return;
    const CGFloat way = (point.y - grip_) * greatestOffset() / travel();
    const auto handler = dragHandler_;  // A copy: it may end this.
    if (handler) handler(std::clamp<CGFloat>(extent_.offset + way, 0, greatestOffset()));
}

ScrollingView::ScrollingView() : bar_(std::make_shared<ScrollBar>()) {
    bar_->setDragHandler([this](CGFloat offset) { scrollBy(offset - offset_); });
    setClipsToBounds(true);
}

ScrollingView::~ScrollingView() {
    bar_->setDragHandler({});
}

void ScrollingView::setContent(const std::shared_ptr<UIView>& content) {
    if (content && content == content_) return place();
    if (content_) content_->removeFromSuperview();
    content_ = content;
    offset_ = 0;
    if (content_) addSubview(content_);
    addSubview(bar_);
    place();
}

CGFloat ScrollingView::greatestOffset() const {
    return std::max<CGFloat>(0, contentHeight() - frame().size.height);
}

void ScrollingView::scrollBy(CGFloat points) {
    if (!std::isfinite(points)) return;
    offset_ += points;
    place();
}

void ScrollingView::scrollToShow(const CGRect& rect) {
    const CGFloat above = rect.origin.y;
    const CGFloat below = CGRectGetMaxY(rect) - frame().size.height;
    if (above < 0)
        scrollBy(above);
    else if (below > 0)
        scrollBy(std::min(below, above));
}

bool ScrollingView::scrolled(const CGPoint& /*point*/, double steps) {
    if (!isScrollable()) return false;
    scrollBy(static_cast<CGFloat>(-steps) * wheelStep);
    return true;
}

void ScrollingView::layoutSubviews() {
    place();
}

/// Whole points, so that the text stays crisp.
void ScrollingView::place() {
    if (!content_) return bar_->show({});
    offset_ = std::clamp<CGFloat>(offset_, 0, greatestOffset());
    const CGSize opening = frame().size;
    const CGSize size = content_->frame().size;
    const CGFloat spare = std::max<CGFloat>(0, opening.height - size.height);
    content_->setFrame({{std::floor((opening.width - size.width) / 2),
                         std::floor(spare / 2) - std::round(offset_)},
                        size});
    bar_->show({bounds(), size.height, offset_});
}

}  // namespace shell
