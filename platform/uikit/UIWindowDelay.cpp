#include "platform/uikit/UIWindow.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double patienceSeconds = 0.15;
// Points. A finger that taps is not quite still, and rolls a little further while it is lifted.
constexpr CGFloat farthestOfARest = 4;
constexpr CGFloat farthestOfATap = 8;

}  // namespace

/// The nearest one above the view that the touch is on. nullptr where none waits: the mouse says at
/// once what it means.
std::shared_ptr<UIView> UIWindow::viewDelaying(const UITouch& touch) const {
    if (touch.type() != UITouchType::Direct) return nullptr;
    std::shared_ptr<UIView> below = touch.view();
    for (auto above = below->superview(); above; above = above->superview()) {
        if (above->delaysTouchesIn(*below)) return above;
        below = above;
    }
    return nullptr;
}

void UIWindow::delayTouch(int identifier, const std::shared_ptr<UIView>& scroller) {
    DelayedTouch& delayed = delayed_[identifier];
    delayed.scroller = scroller;
    delayed.patience.start(patienceSeconds, [this, identifier] { patienceEnded(identifier); });
}

/// While a touch is kept back, its previous location is where it came down.
UIWindow::Meaning UIWindow::meaningOf(const UITouch& touch, UITouchPhase phase) const {
    const CGPoint way = {touch._locationInWindow.x - touch._previousLocationInWindow.x,
                         touch._locationInWindow.y - touch._previousLocationInWindow.y};
    const bool decides = phase != UITouchPhase::Moved;
    const CGFloat distance = phase == UITouchPhase::Stationary ? farthestOfARest : farthestOfATap;
    if (std::hypot(way.x, way.y) < distance) return decides ? Meaning::Content : Meaning::Open;
    return std::abs(way.y) > std::abs(way.x) ? Meaning::Scroll : Meaning::Content;
}

/// Answers whether the phase is now to be delivered.
bool UIWindow::endsDelay(int identifier, UITouchPhase phase) {
    if (phase == UITouchPhase::Cancelled) {
        delayed_.erase(identifier);
        touches_.erase(identifier);
        return false;
    }
    const Meaning meaning = meaningOf(*touches_.at(identifier), phase);
    return meaning != Meaning::Open && handOver(identifier, meaning);
}

/// Begins the touch for whom it is meant for. Answers whether it goes on: the view may end it.
bool UIWindow::handOver(int identifier, Meaning meaning) {
    const std::shared_ptr<UITouch> touch = touches_.at(identifier);
    const auto scroller = delayed_.at(identifier).scroller.lock();
    delayed_.erase(identifier);
    const CGPoint beginning = touch->_previousLocationInWindow;
    // What the finger came down on may have been scrolled away by another one.
    const bool isThereStill = hitTest(beginning, nullptr) == touch->view();
    if (scroller && (meaning == Meaning::Scroll || !isThereStill)) touch->_view = scroller;
    const CGPoint now = std::exchange(touch->_locationInWindow, beginning);
    beginOnView(touch);
    touch->_locationInWindow = now;
    const auto found = touches_.find(identifier);
    return found != touches_.end() && found->second == touch;
}

/// It is the timer's own call, and nothing here may be left when a view has been handed the touch.
void UIWindow::patienceEnded(int identifier) {
    const auto self = strong(this);
    const std::shared_ptr<UITouch> touch = touches_.at(identifier);
    const Meaning meaning = meaningOf(*touch, UITouchPhase::Stationary);
    if (!handOver(identifier, meaning)) return;
    if (touch->_locationInWindow != touch->_previousLocationInWindow)
        deliver(UITouchPhase::Moved, touch);
}
