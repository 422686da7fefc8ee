#include "platform/uikit/UIView.hpp"

#include "platform/uikit/UIWindow.hpp"

#include <cmath>

namespace {
constexpr unsigned flexibleWidth = 2;
/// Points. Nothing lies farther out; sums of it stay finite.
constexpr CGFloat farthest = 1e9;

CGFloat usable(CGFloat coordinate) {
    if (!std::isfinite(coordinate)) return 0;
    return std::fmin(std::fmax(coordinate, -farthest), farthest);
}

CGRect usable(const CGRect& rect) {
    return CGRectMake(usable(rect.origin.x), usable(rect.origin.y), usable(rect.size.width),
                      usable(rect.size.height));
}
}  // namespace

UIView::UIView(const CGRect& frame) : frame_(usable(frame)) {}

UIView::~UIView() {
    for (const auto& subview : subviews_)
        subview->superview_ = nullptr;
}

std::shared_ptr<UIView> UIView::strong(UIView* view) {
    return view ? std::static_pointer_cast<UIView>(view->weak_from_this().lock()) : nullptr;
}

void UIView::setFrame(const CGRect& requested) {
    const CGRect frame = usable(requested);
    if (frame == frame_) return;
    const CGRect old = frame_;
    damageExtent();
    frame_ = frame;
    if (superview_) superview_->dropExtents();
    if (frame.size != old.size) {
        dropExtents();
        if (auto* window = asWindow()) window->resized();
        setNeedsLayout();
        resizeSubviews(old.size.width);
    }
    damageExtent();
    structureChanged();
}

void UIView::resizeSubviews(CGFloat oldWidth) {
    const CGFloat wider = frame_.size.width - oldWidth;
    if (wider == 0) return;
    for (const auto& subview : subviews_) {
        if (!(subview->autoresizingMask_ & flexibleWidth)) continue;
        CGRect frame = subview->frame_;
        frame.size.width += wider;
        subview->setFrame(frame);
    }
}

void UIView::setHidden(bool hidden) {
    if (hidden == hidden_) return;
    damageExtent();
    hidden_ = hidden;
    if (superview_) superview_->dropExtents();
    damageExtent();
    if (auto* window = rootWindow(); window && hidden) window->forgetFocus(*this);
    structureChanged();
}

void UIView::setBackgroundColor(const std::optional<UIColor>& color) {
    if (color == backgroundColor_) return;
    backgroundColor_ = color;
    setNeedsDisplay();
}

CGPoint UIView::originInRoot() const {
    CGPoint origin;
    for (const UIView* view = this; view->superview_; view = view->superview_) {
        origin.x += view->frame_.origin.x;
        origin.y += view->frame_.origin.y;
    }
    return origin;
}

CGPoint UIView::convertPointToView(const CGPoint& point, const UIView* view) const {
    const CGPoint from = originInRoot();
    const CGPoint to = view ? view->originInRoot() : CGPoint{};
    return {point.x + from.x - to.x, point.y + from.y - to.y};
}

CGRect UIView::convertRectToView(const CGRect& rect, const UIView* view) const {
    return {convertPointToView(rect.origin, view), rect.size};
}

void UIView::structureChanged() {
    if (auto* window = rootWindow()) window->viewsChanged();
}
