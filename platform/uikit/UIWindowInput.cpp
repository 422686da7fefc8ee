#include "platform/foundation/NSRunLoop.hpp"
#include "platform/uikit/UITouchMessage.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {
constexpr double scrollPauseSeconds = 0.5;
}

void UIWindow::sendTouch(UITouchPhase phase, const CGPoint& point, int identifier,
                         UITouchType type) {
    const auto self = strong(this);
    if (phase == UITouchPhase::Began) return beginTouch(point, identifier, type);
    const auto found = touches_.find(identifier);
    if (found == touches_.end()) return;
    const std::shared_ptr<UITouch> touch = found->second;
    const bool delayed = delayed_.contains(identifier);
    touch->_timestamp = NSRunLoop::mainRunLoop().currentTime();
    if (!delayed) touch->_previousLocationInWindow = touch->_locationInWindow;
    const bool usable = std::isfinite(point.x) && std::isfinite(point.y);
    if (usable) touch->_locationInWindow = point;
    if (phase == UITouchPhase::Stationary) return touch->setPhase(phase);
    if (phase == UITouchPhase::Moved && !usable) return;
    if (delayed && !endsDelay(identifier, phase)) return;
    if (phase != UITouchPhase::Moved) touches_.erase(identifier);
    deliver(phase, touch);
}

void UIWindow::beginTouch(const CGPoint& point, int identifier, UITouchType type) {
    const auto former = touches_.extract(identifier);
    // Of one that is kept back nobody has heard.
    if (former && delayed_.erase(identifier) == 0)
        deliver(UITouchPhase::Cancelled, former.mapped());
    setFocusVisible(false);
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) return;
    const std::shared_ptr<UIView> view = hitTest(point, nullptr);
    if (!view) return;
    const auto touch = std::make_shared<UITouch>();
    touch->_locationInWindow = touch->_previousLocationInWindow = point;
    touch->_view = view;
    touch->_window = std::static_pointer_cast<UIWindow>(strong(this));
    touch->_timestamp = NSRunLoop::mainRunLoop().currentTime();
    touch->_type = type;
    touches_.insert_or_assign(identifier, touch);
    if (const auto scroller = viewDelaying(*touch)) return delayTouch(identifier, scroller);
    beginOnView(touch);
}

void UIWindow::beginOnView(const std::shared_ptr<UITouch>& touch) {
    const std::shared_ptr<UIView> view = touch->view();
    if (view && canFocus(*view)) setFocusedView(view);
    deliver(UITouchPhase::Began, touch);
}

void UIWindow::deliver(UITouchPhase phase, const std::shared_ptr<UITouch>& touch) {
    touch->setPhase(phase);
    const UITouchSet touches{touch};
    UITouchMessage{touch->view(), phase, touches, std::make_shared<UIEvent>(touches)}.send();
}

void UIWindow::cancelTouches() {
    const auto self = strong(this);
    for (const auto& [identifier, delayed] : std::exchange(delayed_, {}))
        touches_.erase(identifier);  // Nobody has heard of it.
    for (const auto& [identifier, touch] : std::exchange(touches_, {}))
        deliver(UITouchPhase::Cancelled, touch);
}

void UIWindow::forget(const UIView& subtree) {
    std::erase_if(touches_, [&subtree](const auto& entry) {
        const auto view = entry.second->view();
        return !view || view->isDescendantOf(&subtree);
    });
    std::erase_if(delayed_, [this](const auto& entry) { return !touches_.contains(entry.first); });
    forgetFocus(subtree);
}

bool UIWindow::sendScroll(const CGPoint& point, double steps) {
    const auto self = strong(this);
    if (!std::isfinite(steps) || steps == 0) return false;
    const double now = NSRunLoop::mainRunLoop().currentTime();
    const auto former = lastScroll_.taker.lock();
    const bool goesOn = former && former->window() == self && former->takesInput() &&
                        lastScroll_.point == point && now - lastScroll_.time < scrollPauseSeconds;
    for (auto view = goesOn ? former : hitTest(point, nullptr); view; view = view->superview()) {
        if (!view->scrolled(convertPointToView(point, view.get()), steps)) continue;
        lastScroll_ = {view, point, now};
        return true;
    }
    return false;
}

bool UIWindow::sendKey(UIKey key) {
    const auto self = strong(this);
    setFocusVisible(true);
    if (key == UIKey::Tab) return moveFocus(Direction::Forward);
    if (key == UIKey::BackTab) return moveFocus(Direction::Backward);
    const std::shared_ptr<UIView> view = focusedView();
    return view && view->takesInput() && view->keyPressed(key);
}

void UIWindow::setFocusVisible(bool visible) {
    if (visible == focusVisible_) return;
    focusVisible_ = visible;
    if (const auto view = focusedView()) view->paintBoundsChanged();
}

void UIWindow::setFocusedView(const std::shared_ptr<UIView>& view) {
    const std::shared_ptr<UIView> former = focusedView();
    if (view == former) return;
    if (view && !canFocus(*view)) return;
    focused_ = view;
    if (former) former->paintBoundsChanged();
    if (view) view->paintBoundsChanged();
}

bool UIWindow::canFocus(const UIView& view) const {
    return view.root() == this && view.takesInput() && view.canBecomeFocused();
}

void UIWindow::forgetFocus(const UIView& subtree) {
    const auto view = focusedView();
    if (view && view->isDescendantOf(&subtree)) setFocusedView(nullptr);
}

bool UIWindow::moveFocus(Direction direction) {
    const auto views = focusableViews();
    if (views.empty()) return false;
    const auto count = static_cast<std::ptrdiff_t>(views.size());
    const auto current = std::find(views.begin(), views.end(), focusedView()) - views.begin();
    const bool none = current == count;
    std::ptrdiff_t next = 0;
    if (direction == Direction::Forward)
        next = none ? 0 : (current + 1) % count;
    else
        next = none ? count - 1 : (current + count - 1) % count;
    setFocusedView(views[static_cast<std::size_t>(next)]);
    return true;
}

std::vector<std::shared_ptr<UIView>> UIWindow::focusableViews() {
    std::vector<std::shared_ptr<UIView>> found;
    std::vector<std::shared_ptr<UIView>> pending{strong(this)};
    while (!pending.empty()) {
        const std::shared_ptr<UIView> view = std::move(pending.back());
        pending.pop_back();
        if (!view || view->hidden_ || !view->userInteractionEnabled_) continue;
        if (view->canBecomeFocused()) found.push_back(view);
        pending.insert(pending.end(), view->subviews_.rbegin(), view->subviews_.rend());
    }
    return found;
}
