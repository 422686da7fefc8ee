#pragma once

#include "platform/foundation/NSNotificationCenter.hpp"
#include "shells/headless/EventSink.hpp"

#include <memory>

namespace headless {

/// Reports the log lines and everything that is posted in the default notification centre, as long
/// as it lives. It observes from the first, so a notification stands before what others make of it.
class EventWatcher {
 public:
    explicit EventWatcher(EventSink& events);
    ~EventWatcher();
    EventWatcher(const EventWatcher&) = delete;
    EventWatcher& operator=(const EventWatcher&) = delete;

 private:
    std::shared_ptr<NSObject> observer_ = std::make_shared<NSObject>();
};

}  // namespace headless
