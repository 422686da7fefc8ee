#pragma once

#include "platform/foundation/NSNotificationCenter.hpp"
#include "shells/headless/Answer.hpp"
#include "shells/headless/Commands.hpp"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace headless {

/// Writes the output: one JSON object a line.
class EventSink {
 public:
    using Writer = std::function<void(const std::string& line)>;
    explicit EventSink(Writer writer) : writer_(std::move(writer)) {}

    void write(const Json& object) const {
        if (observer_) observer_(object);
        if (writer_) writer_(lineFrom(object));
    }
    /// Called with each object before it is written.
    void setObserver(std::function<void(const Json&)> observer) { observer_ = std::move(observer); }
    /// Writes nothing from now on.
    void mute() { writer_ = nullptr; }

 private:
    Writer writer_;
    std::function<void(const Json&)> observer_;
};

/// Reports log lines and all notifications of the default centre while it exists. It is the first
/// observer, so a notification is reported before what other observers cause.
class EventWatcher {
 public:
    explicit EventWatcher(EventSink& events);
    ~EventWatcher();
    EventWatcher(const EventWatcher&) = delete;
    EventWatcher& operator=(const EventWatcher&) = delete;

 private:
    std::shared_ptr<NSObject> observer_ = std::make_shared<NSObject>();
};

/// Reports every touch message while it exists. One at a time.
class TouchReport {
 public:
    explicit TouchReport(EventSink& events);
    ~TouchReport();
    TouchReport(const TouchReport&) = delete;
    TouchReport& operator=(const TouchReport&) = delete;
};

/// The events since the last command other than "wait" that no "wait" has matched.
class RecentEvents {
 public:
    /// The limit, beyond which the oldest is dropped: a server may announce changes for hours
    /// between two commands.
    static constexpr std::size_t most = 10'000;

    void add(const Json& event);
    void forget() { events_.clear(); }
    /// The first event that matches the words; it is removed together with those before it. The
    /// words are its name and its further entries in order; "-" matches any entry, and a number one
    /// that differs by a server's smallest step at most.
    std::optional<Json> take(Arguments description);

 private:
    std::deque<Json> events_;
};

}  // namespace headless
