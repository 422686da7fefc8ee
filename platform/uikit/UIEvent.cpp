#include "platform/uikit/UIEvent.hpp"

#include "platform/foundation/NSClassRegistry.hpp"
#include "platform/uikit/UIView.hpp"

#include <cstring>

namespace {

std::function<void(const UITouchMessage&)>& touchMessageObserver() {
    static std::function<void(const UITouchMessage&)> observer;
    return observer;
}

}  // namespace

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

void setTouchMessageObserver(std::function<void(const UITouchMessage&)> observer) {
    touchMessageObserver() = std::move(observer);
}

std::string_view UITouchMessage::selector() const {
    switch (phase) {
        case UITouchPhase::Began:
            return "touchesBegan:withEvent:";
        case UITouchPhase::Moved:
            return "touchesMoved:withEvent:";
        case UITouchPhase::Ended:
            return "touchesEnded:withEvent:";
        case UITouchPhase::Cancelled:
            return "touchesCancelled:withEvent:";
        case UITouchPhase::Stationary:
            break;
    }
    return {};
}

void UITouchMessage::send() const {
    if (!receiver || phase == UITouchPhase::Stationary) return;
    if (const auto observer = touchMessageObserver()) observer(*this);
    if (phase == UITouchPhase::Began) return receiver->touchesBegan(touches, event);
    if (phase == UITouchPhase::Moved) return receiver->touchesMoved(touches, event);
    if (phase == UITouchPhase::Ended) return receiver->touchesEnded(touches, event);
    receiver->touchesCancelled(touches, event);
}

static_assert(sizeof(NSObject) == sizeof(void*), "a record begins right behind the class pointer");

namespace {
const ClassRegistration<UITouchesEvent> registration("UITouchesEvent");
}

void UITouchesEvent::_initWithEvent(const NSObject& record, const UITouchSet& touches) {
    const auto* start = reinterpret_cast<const unsigned char*>(&record);
    std::memcpy(&record_, start + sizeof(NSObject), sizeof record_);
    setTouches(touches);
}
