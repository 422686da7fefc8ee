#include "platform/uikit/UIView.hpp"
#include "platform/uikit/UIWindow.hpp"

bool UIView::pointInside(const CGPoint& point) const {
    return CGRectContainsPoint(bounds(), point);
}

std::shared_ptr<UIView> UIView::hitTest(const CGPoint& point, const UIEvent* event) {
    if (hidden_ || !userInteractionEnabled_ || !pointInside(point)) return nullptr;
    const std::shared_ptr<UIView> self = strong(this);
    const auto views = subviews();
    for (auto view = views.rbegin(); view != views.rend(); ++view) {
        const CGPoint& origin = (*view)->frame_.origin;
        if (auto hit = (*view)->hitTest({point.x - origin.x, point.y - origin.y}, event))
            return hit;
    }
    return self;
}

bool UIView::takesInput() const {
    for (const UIView* view = this; view; view = view->superview_)
        if (view->hidden_ || !view->userInteractionEnabled_) return false;
    return true;
}

bool UIView::scrolled(const CGPoint& point, double steps) {
    (void)point;
    (void)steps;
    return false;
}

bool UIView::keyPressed(UIKey key) {
    (void)key;
    return false;
}

bool UIView::isFocused() const {
    const auto holder = window();
    return holder && holder->focusedView().get() == this;
}

CGPoint UITouch::locationInView(const UIView* view) const {
    if (!view) return _locationInWindow;
    const CGPoint origin = view->convertPointToView({}, nullptr);
    return {_locationInWindow.x - origin.x, _locationInWindow.y - origin.y};
}

CGPoint UITouch::previousLocationInView(const UIView* view) const {
    if (!view) return _previousLocationInWindow;
    const CGPoint origin = view->convertPointToView({}, nullptr);
    return {_previousLocationInWindow.x - origin.x, _previousLocationInWindow.y - origin.y};
}
