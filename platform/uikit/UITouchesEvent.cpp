#include "platform/uikit/UITouchesEvent.hpp"

#include "platform/foundation/NSClassRegistry.hpp"

#include <cstring>

static_assert(sizeof(NSObject) == sizeof(void*), "a record begins right behind the class pointer");

namespace {
const ClassRegistration<UITouchesEvent> registration("UITouchesEvent");
}

void UITouchesEvent::_initWithEvent(const NSObject& record, const UITouchSet& touches) {
    const auto* start = reinterpret_cast<const unsigned char*>(&record);
    std::memcpy(&record_, start + sizeof(NSObject), sizeof record_);
    setTouches(touches);
}
