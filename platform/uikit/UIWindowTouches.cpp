#include "platform/foundation/NSRunLoop.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

// The delivery of touches to views, including delayed ones.

namespace {

constexpr double patienceSeconds = 0.15;
// Points. A finger that taps is not quite still, and rolls a little further while it is lifted.
constexpr CGFloat farthestOfARest = 4;
constexpr CGFloat farthestOfATap = 8;

}  // namespace

void UIWindow::sendTouch(UITouchPhase phase, const CGPoint& point, int identifier,
                         UITouchType type) {
    const auto self = strongSelf<UIWindow>();
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
    // No view has been told about a delayed one.
    if (former && delayed_.erase(identifier) == 0)
        deliver(UITouchPhase::Cancelled, former.mapped());
    setFocusVisible(false);
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) return;
    const std::shared_ptr<UIView> view = hitTest(point, nullptr);
    if (!view) return;
    const auto touch = std::make_shared<UITouch>();
    touch->_locationInWindow = touch->_previousLocationInWindow = point;
    touch->_view = view;
    touch->_window = strongSelf<UIWindow>();
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
    const auto self = strongSelf<UIWindow>();
    for (const auto& [identifier, delayed] : std::exchange(delayed_, {}))
        touches_.erase(identifier);  // No view has been told about it.
    for (const auto& [identifier, touch] : std::exchange(touches_, {}))
        deliver(UITouchPhase::Cancelled, touch);
}

void UIWindow::viewWasRemoved(const UIView& view) {
    std::erase_if(touches_, [&view](const auto& entry) {
        const auto touched = entry.second->view();
        return !touched || touched->isDescendantOfView(view);
    });
    std::erase_if(delayed_, [this](const auto& entry) { return !touches_.contains(entry.first); });
    viewWasHidden(view);
}

// Delayed touches

/// The nearest superview that delays the touch; nullptr if none does. A mouse press is never
/// delayed.
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

/// While a touch is delayed, its previous location is where it began.
UIWindow::Meaning UIWindow::meaningOf(const UITouch& touch, UITouchPhase phase) const {
    const CGPoint way = {touch._locationInWindow.x - touch._previousLocationInWindow.x,
                         touch._locationInWindow.y - touch._previousLocationInWindow.y};
    const bool decides = phase != UITouchPhase::Moved;
    const CGFloat distance = phase == UITouchPhase::Stationary ? farthestOfARest : farthestOfATap;
    if (std::hypot(way.x, way.y) < distance) return decides ? Meaning::Content : Meaning::Open;
    return std::abs(way.y) > std::abs(way.x) ? Meaning::Scroll : Meaning::Content;
}

/// Returns whether to deliver the phase now.
bool UIWindow::endsDelay(int identifier, UITouchPhase phase) {
    if (phase == UITouchPhase::Cancelled) {
        delayed_.erase(identifier);
        touches_.erase(identifier);
        return false;
    }
    const Meaning meaning = meaningOf(*touches_.at(identifier), phase);
    return meaning != Meaning::Open && handOver(identifier, meaning);
}

/// Begins the touch on its receiver. Returns whether it continues: the view may end it.
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

/// Called by the timer; the call to the view comes last, because it may destroy everything here.
void UIWindow::patienceEnded(int identifier) {
    const auto self = strongSelf<UIWindow>();
    const std::shared_ptr<UITouch> touch = touches_.at(identifier);
    const Meaning meaning = meaningOf(*touch, UITouchPhase::Stationary);
    if (!handOver(identifier, meaning)) return;
    if (touch->_locationInWindow != touch->_previousLocationInWindow)
        deliver(UITouchPhase::Moved, touch);
}
