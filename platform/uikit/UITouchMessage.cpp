#include "platform/uikit/UITouchMessage.hpp"

#include "platform/uikit/UIView.hpp"

namespace {

std::function<void(const UITouchMessage&)>& touchMessageObserver() {
    static std::function<void(const UITouchMessage&)> observer;
    return observer;
}

}  // namespace

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
