#pragma once

#include "shells/headless/EventSink.hpp"

namespace headless {

/// Reports every touch message, as long as it lives. One at a time.
class TouchReport {
 public:
    explicit TouchReport(EventSink& events);
    ~TouchReport();
    TouchReport(const TouchReport&) = delete;
    TouchReport& operator=(const TouchReport&) = delete;
};

}  // namespace headless
