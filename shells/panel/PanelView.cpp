#include "shells/panel/PanelView.hpp"

#include <algorithm>
#include <cmath>

namespace shell {
namespace {

// A tapping finger moves less than this. Points.
constexpr CGFloat dragThreshold = 4;

// Opaque: a translucent panel would show its own shadow.
constexpr UIColor borderColor = {1, 1, 1, 0.09};
constexpr UIColor shadowColor = {0, 0, 0, 0.45};
constexpr CGFloat shadowBlur = 18;  // points, on both sides of the edge
constexpr CGFloat shadowDrop = 10;  // points downwards
constexpr CGFloat shadowInset = 6;  // points; it comes out below the panel, hardly beside it

// Points. The widget's own margin is above the text, so the text is placed slightly high.
constexpr CGFloat noticeLineHeight = 14;
constexpr CGFloat noticeMarginBelow = 8;
constexpr CGFloat buttonMarginBelow = 14;
constexpr CGFloat noticeMargin = 20;
constexpr CGFloat noticeSize = 11;
constexpr UIColor noticeColor = {1, 1, 1, 0.55};

// Points: the height of two rows, which an offer leaves to a widget that is taller.
constexpr CGFloat leastRows = 100;

}  // namespace

PanelView::PanelView()
    : scroller_(std::make_shared<ScrollingView>()),
      notice_(std::make_shared<CentredLabel>()),
      offer_(std::make_shared<OutputsOffer>()) {
    notice_->setFont(UIFont::systemFontOfSize(noticeSize));
    notice_->setAnnounced(true);
    notice_->setTextColor(noticeColor);
}

void PanelView::setNotice(const NSString& text) {
    notice_->setText(text);
    if (!text) notice_->removeFromSuperview();
    if (text && !notice_->superview()) addSubview(notice_);
}

void PanelView::setOutputs(RoleOutputs* outputs) {
    if (!scroller_->superview()) addSubview(scroller_);  // The Tab key comes to the rows first.
    offer_->follow(outputs);
    if (!offer_->isOpen()) offer_->removeFromSuperview();
    if (offer_->isOpen() && !offer_->superview()) addSubview(offer_);
}

void PanelView::setCloseHandler(std::function<void()> handler) {
    closeHandler_ = std::move(handler);
    if (closeButton_) closeButton_->removeFromSuperview();
    closeButton_ =
        closeHandler_ ? std::make_shared<CornerButton>(CornerButton::Sign::Cross) : nullptr;
    if (closeButton_) callOnPress(*closeButton_, &PanelView::closeHandler_);
}

void PanelView::setSettingsHandler(std::function<void()> handler) {
    settingsHandler_ = std::move(handler);
    if (gear_) gear_->removeFromSuperview();
    if (noticeButton_) noticeButton_->removeFromSuperview();
    gear_ = nullptr;
    noticeButton_ = nullptr;
    if (!settingsHandler_) return;
    gear_ = std::make_shared<CornerButton>(CornerButton::Sign::Gear);
    gear_->setRows(scroller_);
    callOnPress(*gear_, &PanelView::settingsHandler_);
    noticeButton_ = makeSettingsButton();
    callOnPress(*noticeButton_, &PanelView::settingsHandler_);
}

void PanelView::callOnPress(UIButton& button, std::function<void()> PanelView::*handler) {
    button.addAction(strongSelf<PanelView>(), UIControlEventTouchUpInside,
                     [this, handler](const auto& /*button*/) {
                         const auto call = this->*handler;  // A copy: it may end this.
                         call();
                     });
}

CGFloat PanelView::footerHeight(CGFloat width) const {
    return offer_->heightFor(std::max(width, smallestPanel.width)) + noticeHeight();
}

CGFloat PanelView::noticeHeight() const {
    const CGFloat button = hasNoticeButton() ? PlateButton::height + buttonMarginBelow : 0;
    return notice_->text() ? noticeTextHeight() + noticeMarginBelow + button : 0;
}

CGFloat PanelView::noticeTextHeight() const {
    return noticeLineHeight * static_cast<CGFloat>(notice_->lines());
}

void PanelView::setLayout(const PanelLayout& layout, PanelEdge edge) {
    if (scroller_->superview() == nullptr) addSubview(scroller_);
    setFrame({{0, 0}, layout.window});
    CGRect viewport = layout.viewport;
    placeFooter(viewport);
    if (closeButton_) {
        closeButton_->placeOn(layout.panel);
        addSubview(closeButton_);
        if (scroller_->contentHeight() > viewport.size.height) {
            viewport.origin.y += CornerButton::crossHeight;
            viewport.size.height =
                std::max<CGFloat>(0, viewport.size.height - CornerButton::crossHeight);
        }
    }
    if (gear_) {
        gear_->placeOn(layout.panel);
        addSubview(gear_);  // The Tab key comes to it last.
    }
    scroller_->setFrame(viewport);
    scroller_->setNeedsLayout();
    if (panel_ == layout.panel && edge_ == edge) return;
    panel_ = layout.panel;
    edge_ = edge;
    setNeedsDisplay();
}

/// Takes the room for the offer and the notice from the lower end of the widget's viewport. On a
/// screen with no room for the rows and an offer, the rows come first.
void PanelView::placeFooter(CGRect& viewport) {
    const CGFloat bottom = CGRectGetMaxY(viewport);
    const CGFloat room = std::max<CGFloat>(0, viewport.size.height - noticeHeight());
    const CGFloat wanted = offer_->heightFor(viewport.size.width);
    const bool fits = room - wanted >= std::min(scroller_->contentHeight(), leastRows);
    offer_->setHidden(!fits);
    viewport.size.height = fits ? room - wanted : room;
    offer_->setFrame(
        CGRectMake(viewport.origin.x, CGRectGetMaxY(viewport), viewport.size.width, wanted));
    offer_->setNeedsLayout();
    notice_->setFrame(CGRectMake(viewport.origin.x + noticeMargin,
                                 std::max(viewport.origin.y, bottom - noticeHeight()),
                                 viewport.size.width - 2 * noticeMargin, noticeTextHeight()));
    if (noticeButton_ && !hasNoticeButton()) noticeButton_->removeFromSuperview();
    if (!hasNoticeButton()) return;
    noticeButton_->placeIn(
        CGRectOffset(notice_->frame(), 0, noticeTextHeight() + noticeMarginBelow));
    addSubview(noticeButton_);
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

/// The shadow takes no touches.
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
    // The end of another finger's touch does not end the drag.
    if (!touches.empty() && touches.front() == dragging_.lock()) dragging_.reset();
}

void PanelView::touchesCancelled(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    touchesEnded(touches, event);
}

}  // namespace shell
