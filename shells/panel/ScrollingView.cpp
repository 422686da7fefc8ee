#include "shells/panel/ScrollingView.hpp"

#include <algorithm>
#include <cmath>

namespace {

// Points.
constexpr CGFloat wheelStep = 50;
constexpr CGFloat indicatorWidth = 3;
constexpr CGFloat indicatorMargin = 4;
constexpr CGFloat shortestIndicator = 24;
constexpr UIColor indicatorColor = {1, 1, 1, 0.35};

class ScrollIndicator : public UIView {
 public:
    std::string_view className() const override { return "ScrollIndicator"; }
    void drawRect(Canvas& canvas) override {
        canvas.fillRounded(bounds(), indicatorWidth / 2, indicatorColor);
    }
};

}  // namespace

ScrollingView::ScrollingView() : indicator_(std::make_shared<ScrollIndicator>()) {
    indicator_->setUserInteractionEnabled(false);
    indicator_->setHidden(true);
    setClipsToBounds(true);
}

void ScrollingView::setContent(const std::shared_ptr<UIView>& content) {
    if (content && content == content_) return place();
    if (content_) content_->removeFromSuperview();
    content_ = content;
    offset_ = 0;
    if (content_) addSubview(content_);
    addSubview(indicator_);
    place();
}

CGFloat ScrollingView::greatestOffset() const {
    return content_ ? std::max<CGFloat>(0, content_->frame().size.height - frame().size.height) : 0;
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
    const CGFloat greatest = greatestOffset();
    indicator_->setHidden(greatest <= 0);
    if (!content_) return;
    offset_ = std::clamp<CGFloat>(offset_, 0, greatest);
    const CGSize opening = frame().size;
    const CGSize size = content_->frame().size;
    const CGFloat spare = std::max<CGFloat>(0, opening.height - size.height);
    content_->setFrame({{std::floor((opening.width - size.width) / 2),
                         std::floor(spare / 2) - std::round(offset_)},
                        size});

    if (greatest <= 0) return;
    // The corners are round: the indicator keeps clear of them.
    const CGFloat track = std::max<CGFloat>(0, opening.height - 2 * panelRadius);
    const CGFloat length =
        std::min(track, std::max(shortestIndicator, track * opening.height / size.height));
    indicator_->setFrame(CGRectMake(opening.width - indicatorMargin - indicatorWidth,
                                    panelRadius + (track - length) * offset_ / greatest,
                                    indicatorWidth, length));
}
