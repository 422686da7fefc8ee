#include "shells/panel/TapView.hpp"

#include <algorithm>
#include <cmath>

namespace {
constexpr CGFloat farthestForATap = 10;  // Points.
}

std::shared_ptr<UIView> TapView::hitTest(const CGPoint& point, const UIEvent* event) {
    if (telling_) return UIView::hitTest(point, event);
    const bool takes = !isHidden() && isUserInteractionEnabled() && pointInside(point);
    return takes ? strongSelf<UIView>() : nullptr;
}

void TapView::touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    if (telling_) return;
    UIView::touchesBegan(touches, event);  // What becomes no tap may be a drag of the panel's.
    if (!touch_.expired() || touches.empty()) return;  // One finger at a time.
    touch_ = touches.front();
    began_ = touches.front()->locationInView(this);
}

void TapView::touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    if (telling_) return;
    forgetIfFar(touches);
    UIView::touchesMoved(touches, event);
}

void TapView::forgetIfFar(const UITouchSet& touches) {
    const auto touch = touch_.lock();
    if (!touch || std::ranges::count(touches, touch) == 0) return;
    const CGPoint now = touch->locationInView(this);
    if (std::hypot(now.x - began_.x, now.y - began_.y) > farthestForATap) touch_.reset();
}

void TapView::touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    if (telling_) return;
    forgetIfFar(touches);
    UIView::touchesEnded(touches, event);
    const auto touch = touch_.lock();
    if (!touch || std::ranges::count(touches, touch) == 0) return;
    touch_.reset();
    if (!tapHandler_) return;
    const auto self = strongSelf<TapView>();
    const auto handler = tapHandler_;
    telling_ = true;
    handler(touch->locationInView(this));
    telling_ = false;
}

void TapView::touchesCancelled(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    UIView::touchesCancelled(touches, event);
    if (std::ranges::count(touches, touch_.lock()) > 0) touch_.reset();
}
