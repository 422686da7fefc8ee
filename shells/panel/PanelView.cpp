#include "shells/panel/PanelView.hpp"

#include <algorithm>
#include <cmath>

namespace {

// Below this a finger that taps is not quite still. Points.
constexpr CGFloat dragThreshold = 4;

// Opaque: through a translucent one its own shadow would be seen.
constexpr UIColor panelColor = {28.0 / 255, 28.0 / 255, 30.0 / 255, 1};
constexpr UIColor borderColor = {1, 1, 1, 0.09};
constexpr UIColor shadowColor = {0, 0, 0, 0.45};
constexpr CGFloat shadowBlur = 18;  // points, on both sides of the edge
constexpr CGFloat shadowDrop = 10;  // points downwards
constexpr CGFloat shadowInset = 6;  // points; it comes out below the panel, hardly beside it

// Points. The widget's own margin is above the text, so it lies a little high in its room.
constexpr CGFloat noticeLineHeight = 14;
constexpr CGFloat noticeMarginBelow = 8;
constexpr CGFloat noticeMargin = 20;
constexpr CGFloat noticeSize = 11;
constexpr UIColor noticeColor = {1, 1, 1, 0.55};

}  // namespace

PanelView::PanelView()
    : scroller_(std::make_shared<ScrollingView>()), notice_(std::make_shared<CentredLabel>()) {
    notice_->setFont(UIFont::systemFontOfSize(noticeSize));
    notice_->setAnnounced(true);
    notice_->setTextColor(noticeColor);
}

void PanelView::setNotice(const NSString& text) {
    notice_->setText(text);
    if (!text) notice_->removeFromSuperview();
    if (text && !notice_->superview()) addSubview(notice_);
}

void PanelView::setCloseHandler(std::function<void()> handler) {
    closeHandler_ = std::move(handler);
    if (closeButton_) closeButton_->removeFromSuperview();
    closeButton_ = closeHandler_ ? std::make_shared<CloseButton>() : nullptr;
    if (!closeButton_) return;
    closeButton_->addAction(strongSelf<PanelView>(), UIControlEventTouchUpInside,
                            [this](const auto& /*button*/) {
                                const auto close = closeHandler_;  // A copy: it may end this.
                                close();
                            });
}

CGFloat PanelView::noticeHeight() const {
    return notice_->text() ? noticeTextHeight() + noticeMarginBelow : 0;
}

CGFloat PanelView::noticeTextHeight() const {
    return noticeLineHeight * static_cast<CGFloat>(notice_->lines());
}

void PanelView::setLayout(const PanelLayout& layout, PanelEdge edge) {
    if (scroller_->superview() == nullptr) addSubview(scroller_);
    setFrame({{0, 0}, layout.window});
    CGRect viewport = layout.viewport;
    viewport.size.height = std::max<CGFloat>(0, viewport.size.height - noticeHeight());
    if (closeButton_) {
        closeButton_->placeOn(layout.panel);
        addSubview(closeButton_);
        if (scroller_->contentHeight() > viewport.size.height) {
            viewport.origin.y += CloseButton::height;
            viewport.size.height = std::max<CGFloat>(0, viewport.size.height - CloseButton::height);
        }
    }
    scroller_->setFrame(viewport);
    notice_->setFrame(CGRectMake(viewport.origin.x + noticeMargin, CGRectGetMaxY(viewport),
                                 viewport.size.width - 2 * noticeMargin, noticeTextHeight()));
    scroller_->setNeedsLayout();
    if (panel_ == layout.panel && edge_ == edge) return;
    panel_ = layout.panel;
    edge_ = edge;
    setNeedsDisplay();
}

void PanelView::drawRect(Canvas& canvas) {
    const CGFloat hairline = 1 / canvas.scale();
    if (edge_ == PanelEdge::Soft) {
        const CGRect shadow =
            CGRectOffset(CGRectInset(panel_, shadowInset, shadowInset), 0, shadowDrop);
        canvas.fillShadow(shadow, panelRadius, shadowBlur, shadowColor);
    }
    canvas.fillRounded(panel_, cornerRadius(edge_), panelColor);
    canvas.strokeRounded(panel_, cornerRadius(edge_), hairline, borderColor);
}

/// The shadow is nothing at all.
bool PanelView::pointInside(const CGPoint& point) const {
    return CGRectContainsPoint(panel_, point);
}

bool PanelView::scrolled(const CGPoint& point, double steps) {
    return scroller_->scrolled(convertPointToView(point, scroller_.get()), steps);
}

void PanelView::touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& /*event*/) {
    if (!dragging_.expired() || touches.empty()) return;
    dragging_ = touches.front();
    dragOrigin_ = touches.front()->locationInView(this);
    scrolling_ = false;
}

void PanelView::touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& /*event*/) {
    const std::shared_ptr<UITouch> touch = dragging_.lock();
    if (!touch || touches.empty() || touches.front() != touch) return;
    const CGPoint now = touch->locationInView(this);
    if (!scrolling_) {
        if (std::hypot(now.x - dragOrigin_.x, now.y - dragOrigin_.y) < dragThreshold) return;
        if (!scroller_->isScrollable()) {
            dragging_.reset();
            if (moveHandler_) moveHandler_();
            return;
        }
        scrolling_ = true;
    }
    scroller_->scrollBy(touch->previousLocationInView(this).y - now.y);
}

void PanelView::touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& /*event*/) {
    // Another finger's end leaves the one that drags alone.
    if (!touches.empty() && touches.front() == dragging_.lock()) dragging_.reset();
}

void PanelView::touchesCancelled(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    touchesEnded(touches, event);
}
