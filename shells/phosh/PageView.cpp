#include "shells/phosh/PageView.hpp"

#include "platform/uikit/UIControl.hpp"

#include <algorithm>
#include <cmath>

namespace phosh {
namespace {

// Points. A tapping finger moves less than this. The lock screen decides after a longer way.
constexpr CGFloat dragThreshold = 4;

// Points.
constexpr CGFloat noticeLineHeight = 16;
constexpr CGFloat noticeMarginBelow = 8;
constexpr CGFloat noticeMargin = 20;
constexpr CGFloat noticeSize = 12;
constexpr UIColor noticeColor = {1, 1, 1, 0.6};

bool holds(const UITouchSet& touches, const std::weak_ptr<UITouch>& finger) {
    return !finger.expired() && std::ranges::count(touches, finger.lock()) > 0;
}

}  // namespace

PageView::PageView() {
    notice_->setFont(UIFont::systemFontOfSize(noticeSize));
    notice_->setAnnounced(true);
    notice_->setTextColor(noticeColor);
}

void PageView::setContent(const std::shared_ptr<UIView>& content) {
    if (!scroller_->superview()) addSubview(scroller_);
    content_ = content;
    scroller_->setContent(content);
    setNeedsLayout();
}

void PageView::setNotice(const NSString& text) {
    notice_->setText(text);
    if (!text) notice_->removeFromSuperview();
    if (text && !notice_->superview()) addSubview(notice_);
    setNeedsLayout();
}

/// A notice does not move the rows as long as there is room for it below them.
void PageView::layoutSubviews() {
    const CGSize page = frame().size;
    const CGFloat taken = content_ ? content_->frame().size.height : 0;
    const CGFloat text = noticeLineHeight * static_cast<CGFloat>(notice_->lines());
    const CGFloat room = notice_->text() ? text + noticeMarginBelow : 0;
    const bool fits = taken + 2 * room <= page.height;
    const CGFloat opening = fits ? page.height : std::max<CGFloat>(0, page.height - room);
    scroller_->setFrame(CGRectMake(0, 0, page.width, opening));
    scroller_->setNeedsLayout();
    const CGFloat below = fits ? std::floor((page.height - taken) / 2) + taken : opening;
    notice_->setFrame(CGRectMake(noticeMargin, below, page.width - 2 * noticeMargin, text));
}

bool PageView::takesTouchAt(const CGPoint& point) {
    return std::dynamic_pointer_cast<UIControl>(hitTest(point, nullptr)) != nullptr;
}

bool PageView::scrolled(const CGPoint& point, double steps) {
    return scroller_->scrolled(convertPointToView(point, scroller_.get()), steps);
}

void PageView::touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& /*event*/) {
    if (!finger_.expired() || touches.empty()) return;
    finger_ = touches.front();
    origin_ = touches.front()->locationInView(this);
    drag_ = Drag::Undecided;
}

void PageView::touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& /*event*/) {
    if (!holds(touches, finger_)) return;
    const std::shared_ptr<UITouch> finger = finger_.lock();
    const CGPoint now = finger->locationInView(this);
    CGFloat way = finger->previousLocationInView(this).y - now.y;
    if (drag_ == Drag::Undecided) {
        const CGFloat across = std::abs(now.x - origin_.x);
        const CGFloat down = std::abs(now.y - origin_.y);
        if (std::hypot(across, down) < dragThreshold) return;
        const bool scrolls = scroller_->isScrollable() && down > across;
        drag_ = scrolls ? Drag::Scrolls : Drag::TurnsThePage;
        way = origin_.y - now.y;
    }
    if (drag_ == Drag::Scrolls) scroller_->scrollBy(way);
}

void PageView::touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& /*event*/) {
    if (!holds(touches, finger_)) return;
    finger_.reset();
    drag_ = Drag::Undecided;
}

void PageView::touchesCancelled(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    touchesEnded(touches, event);
}

}  // namespace phosh
