#include "shells/panel/ScrollingView.hpp"

#include <algorithm>
#include <cmath>

namespace {

constexpr CGFloat wheelStep = 50;  // Points.

}  // namespace

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
