#include "platform/uikit/UIControl.hpp"

#include "platform/uikit/UIWindow.hpp"

#include <algorithm>

void UIControl::addAction(const std::shared_ptr<NSObject>& target, unsigned events,
                          std::function<void(const std::shared_ptr<UIControl>&)> action) {
    if (target && action) targets_.push_back({target, events, std::move(action)});
}

void UIControl::sendActionsForControlEvents(unsigned events) {
    const auto self = strongSelf<UIControl>();
    if (!self) return;
    std::erase_if(targets_, [](const Target& target) { return target.object.expired(); });
    const auto targets = targets_;  // An action may add others.
    for (const Target& target : targets) {
        if (!(target.events & events)) continue;
        if (const auto object = target.object.lock()) target.action(self);
    }
}

void UIControl::setEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    if (!enabled) {
        letGo();
        if (const auto holder = window(); holder && isFocused()) holder->setFocusedView(nullptr);
    }
    setNeedsDisplay();
    structureChanged();
}

void UIControl::setHighlighted(bool highlighted) {
    if (highlighted == highlighted_) return;
    highlighted_ = highlighted;
    setNeedsDisplay();
}

std::shared_ptr<UIView> UIControl::hitTest(const CGPoint& point, const UIEvent* event) {
    return enabled_ ? UIView::hitTest(point, event) : nullptr;
}

void UIControl::touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    (void)event;
    if (!enabled_ || touches.empty() || !touches.front() || tracked_.lock()) return;
    const auto self = strongSelf<UIControl>();
    if (tracking_) letGo();  // The former touch went away without an end.
    const std::shared_ptr<UITouch> touch = touches.front();
    tracked_ = touch;
    tracking_ = true;
    const bool wasHighlighted = highlighted_;
    highlighted_ = true;  // Before the actions: their receivers ask whether the user is at it.
    if (beginTracking(touch->locationInView(this))) {
        if (!wasHighlighted) setNeedsDisplay();
    } else {
        tracked_.reset();
        tracking_ = false;
        highlighted_ = wasHighlighted;
    }
}

void UIControl::touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    (void)event;
    const auto self = strongSelf<UIControl>();
    const std::shared_ptr<UITouch> touch = trackedAmong(touches);
    if (touch) continueTracking(touch->locationInView(this));
}

void UIControl::touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    (void)event;
    const auto self = strongSelf<UIControl>();
    const std::shared_ptr<UITouch> touch = trackedAmong(touches);
    if (!touch) return;
    tracked_.reset();
    tracking_ = false;
    const CGPoint point = touch->locationInView(this);
    endTracking(point);
    if (tracking_) return;  // Another touch holds it by now.
    setHighlighted(false);
    sendActionsForControlEvents(pointInside(point) ? UIControlEventTouchUpInside
                                                   : UIControlEventTouchUpOutside);
}

void UIControl::touchesCancelled(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    (void)event;
    if (trackedAmong(touches)) letGo();
}

std::shared_ptr<UITouch> UIControl::trackedAmong(const UITouchSet& touches) const {
    const auto tracked = tracked_.lock();
    const bool among =
        tracked && std::find(touches.begin(), touches.end(), tracked) != touches.end();
    return among ? tracked : nullptr;
}

void UIControl::letGo() {
    if (!tracking_) return;
    const auto self = strongSelf<UIControl>();
    tracked_.reset();
    tracking_ = false;
    cancelTracking();
    setHighlighted(false);
    sendActionsForControlEvents(UIControlEventTouchCancel);
}

void UIControl::didMoveToWindow() {
    letGo();
}

bool UIControl::beginTracking(const CGPoint& point) {
    (void)point;
    return true;
}

void UIControl::continueTracking(const CGPoint& point) {
    (void)point;
}

void UIControl::endTracking(const CGPoint& point) {
    (void)point;
}

void UIControl::cancelTracking() {}
