#include "shells/headless/TouchReport.hpp"

#include "platform/uikit/UITouchMessage.hpp"
#include "platform/uikit/UITouchesEvent.hpp"
#include "platform/uikit/UIView.hpp"

#include <cinttypes>
#include <cstdio>

namespace headless {
namespace {

std::string hexadecimal(std::uint32_t number) {
    char text[11];
    std::snprintf(text, sizeof text, "0x%08" PRIx32, number);
    return text;
}

Json jsonRecord(const UIEvent* event) {
    const auto* touches = dynamic_cast<const UITouchesEvent*>(event);
    if (touches == nullptr) return nullptr;
    const UIEventRecord& record = touches->record();
    return {{"flags", hexadecimal(record.flags)}, {"type", record.type},
            {"sizeX", jsonNumber(record.sizeX)},  {"sizeY", jsonNumber(record.sizeY)},
            {"x1", jsonNumber(record.x1)},        {"y1", jsonNumber(record.y1)},
            {"x2", jsonNumber(record.x2)},        {"y2", jsonNumber(record.y2)},
            {"x3", jsonNumber(record.x3)},        {"y3", jsonNumber(record.y3)}};
}

Json eventFrom(const UITouchMessage& message) {
    Json event = {{"event", "touch"},
                  {"selector", message.selector()},
                  {"class", message.receiver->className()},
                  {"tag", message.receiver->tag()},
                  {"x", nullptr},
                  {"y", nullptr},
                  {"tapCount", nullptr},
                  {"phase", nullptr},
                  {"touches", message.touches.size()},
                  {"record", jsonRecord(message.event.get())}};
    if (message.touches.empty()) return event;
    const UITouch& touch = *message.touches.front();
    const CGPoint location = touch.locationInView(nullptr);
    event["x"] = jsonNumber(location.x);
    event["y"] = jsonNumber(location.y);
    event["tapCount"] = touch.tapCount();
    event["phase"] = static_cast<int>(touch.phase());
    return event;
}

}  // namespace

TouchReport::TouchReport(EventSink& events) {
    setTouchMessageObserver(
        [&events](const UITouchMessage& message) { events.write(eventFrom(message)); });
}

TouchReport::~TouchReport() {
    setTouchMessageObserver(nullptr);
}

}  // namespace headless
