#include "host/Tarnwick__TouchFix.hpp"

#include "host/Tarnwick__GSEvent.hpp"
#include "platform/foundation/NSClassRegistry.hpp"
#include "platform/foundation/NSDate.hpp"
#include "platform/uikit/UIWindow.hpp"

namespace {

const ClassRegistration<Tarnwick__GSEvent> registration("Tarnwick__GSEvent");

// As the platform's own touches have them; they differ in the bit of a touch that is still down.
constexpr std::uint32_t flagsOfTouchUnderWay = 0x03010180;
constexpr std::uint32_t flagsOfEndedTouch = 0x01010180;
constexpr std::uint32_t typeOfTouches = 3001;
constexpr std::uint8_t flagsOfSingleTouch = 3;
constexpr float fingerSize = 1.0F;  // Points.

void fill(Tarnwick__GSEvent& record, const UITouch* touch) {
    const CGPoint location = touch ? touch->locationInView(touch->window().get()) : CGPoint{};
    const auto x = static_cast<float>(location.x);
    const auto y = static_cast<float>(location.y);
    record.x1 = record.x2 = record.x3 = x;
    record.y1 = record.y2 = record.y3 = y;
    record.sizeX = record.sizeY = fingerSize;
    const bool ended = touch && touch->phase() == UITouchPhase::Ended;
    record.flags = ended ? flagsOfEndedTouch : flagsOfTouchUnderWay;
    record.type = typeOfTouches;
}

}  // namespace

bool Tarnwick__TouchFix::Touch::initWithPoint(const CGPoint& point,
                                              const std::shared_ptr<UIView>& view) {
    heldWindow_ = view ? view->window() : nullptr;
    heldView_ = heldWindow_ ? heldWindow_->hitTest(point, nullptr) : nullptr;
    _tapCount = 1;
    _locationInWindow = _previousLocationInWindow = point;
    _view = heldView_;
    _window = heldWindow_;
    _phase = UITouchPhase::Began;
    _touchFlags |= flagsOfSingleTouch;
    _timestamp = NSDate::timeIntervalSinceReferenceDate();
    return true;
}

std::shared_ptr<UIEvent> Tarnwick__TouchFix::initWithTouch(std::shared_ptr<UIEvent> receiver,
                                                           const std::shared_ptr<UITouch>& touch) {
    const auto record = std::make_shared<Tarnwick__GSEvent>();
    fill(*record, touch.get());
    receiver.reset();
    const Class* touchesEvent = NSClassFromString("UITouchesEvent");
    const auto event =
        touchesEvent ? std::dynamic_pointer_cast<UITouchesEvent>(touchesEvent->create()) : nullptr;
    if (!event) return nullptr;
    event->_initWithEvent(*record, touch ? UITouchSet{touch} : UITouchSet());
    return event;
}
