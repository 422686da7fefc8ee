#include "shells/headless/EventWatcher.hpp"

#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSLog.hpp"

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

}  // namespace headless
