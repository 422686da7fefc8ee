#pragma once

#include "shells/headless/Json.hpp"

#include <functional>
#include <string>

namespace headless {

/// Where the lines for the reader go.
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

}  // namespace headless
