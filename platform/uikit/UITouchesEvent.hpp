#pragma once

#include "platform/uikit/UIEvent.hpp"

#include <array>
#include <cstdint>

/// What an event record says, in the order in which it lies there. Points; the rest is the
/// platform's own matter.
struct UIEventRecord {
    std::uint32_t flags = 0;
    std::uint32_t type = 0;
    std::uint32_t ignored1 = 0;
    float x1 = 0;
    float y1 = 0;
    float x2 = 0;
    float y2 = 0;
    std::array<std::uint32_t, 10> ignored2{};
    std::array<std::uint32_t, 7> ignored3{};
    float sizeX = 0;
    float sizeY = 0;
    float x3 = 0;
    float y3 = 0;
    std::array<std::uint32_t, 3> ignored4{};
};
static_assert(sizeof(UIEventRecord) == 124);

/// The event that touches come with. Found by its name, "UITouchesEvent".
class UITouchesEvent : public UIEvent {
 public:
    std::string_view className() const override { return "UITouchesEvent"; }

    /// Private to the platform. Reads the record by position, as a UIEventRecord that begins right
    /// behind the object's class pointer: nothing else may come first in the record's class.
    void _initWithEvent(const NSObject& record, const UITouchSet& touches);

    const UIEventRecord& record() const { return record_; }

 private:
    UIEventRecord record_;
};
