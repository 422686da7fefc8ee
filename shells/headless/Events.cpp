#include "shells/headless/Events.hpp"

#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/uikit/UIEvent.hpp"
#include "platform/uikit/UIView.hpp"

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>

namespace headless {
namespace {

Json volumeOf(const PropertyValue& userInfo) {
    const PropertyValue volume =
        userInfo.objectForKey(AVSystemController_EffectiveVolumeNotificationParameter_Volume);
    return volume.isNil() ? Json(nullptr) : jsonNumber(volume.floatValue());
}

Json eventFrom(const NSNotification& notification) {
    if (notification.name != AVSystemController_EffectiveVolumeDidChangeNotification)
        return {{"event", "notification"}, {"name", notification.name}};
    const PropertyValue category = notification.userInfo.objectForKey(
        AVSystemController_EffectiveVolumeNotificationParameter_Category);
    return {{"event", "volume-notification"},
            {"category", jsonText(category.string())},
            {"volume", volumeOf(notification.userInfo)}};
}

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

constexpr double smallestStep = 1.0 / 65536;

bool fits(const Json& entry, const Word& word) {
    if (word.isBare("-")) return true;
    if (entry.is_string()) return entry.get_ref<const std::string&>() == word.text;
    const auto number = numberFrom(word);
    if (entry.is_number() && number) return std::abs(entry.get<double>() - *number) <= smallestStep;
    return !word.quoted && entry.dump() == word.text;  // true, false, null
}

bool fits(const Json& event, Arguments description) {
    if (event.size() < description.size()) return false;
    return std::equal(description.begin(), description.end(), event.begin(),
                      [](const Word& word, const Json& entry) { return fits(entry, word); });
}

}  // namespace

EventWatcher::EventWatcher(EventSink& events) {
    setLogSink([&events](const std::string& line) {
        events.write({{"event", "log"}, {"line", line}});
    });
    NSNotificationCenter::defaultCenter().add(
        observer_,
        [&events](const NSNotification& notification) { events.write(eventFrom(notification)); },
        std::nullopt, nullptr);
}

EventWatcher::~EventWatcher() {
    NSNotificationCenter::defaultCenter().removeObserver(observer_.get());
    setLogSink({});
}

TouchReport::TouchReport(EventSink& events) {
    setTouchMessageObserver(
        [&events](const UITouchMessage& message) { events.write(eventFrom(message)); });
}

TouchReport::~TouchReport() {
    setTouchMessageObserver(nullptr);
}

void RecentEvents::add(const Json& event) {
    events_.push_back(event);
    if (events_.size() > most) events_.pop_front();
}

std::optional<Json> RecentEvents::take(Arguments description) {
    const auto found =
        std::ranges::find_if(events_, [&](const Json& event) { return fits(event, description); });
    if (found == events_.end()) return std::nullopt;
    Json event = std::move(*found);
    events_.erase(events_.begin(), found + 1);
    return event;
}

}  // namespace headless
