#pragma once

#include "platform/foundation/NSRunLoop.hpp"

#include <functional>
#include <optional>

/// One call from the main run loop that can be withdrawn; it is withdrawn with the timer. The
/// call may destroy the timer.
class OneShotTimer {
 public:
    OneShotTimer() = default;
    OneShotTimer(const OneShotTimer&) = delete;
    OneShotTimer& operator=(const OneShotTimer&) = delete;
    ~OneShotTimer() { cancel(); }

    /// Replaces the call that is still to come.
    void start(double seconds, std::function<void()> function);
    void cancel();
    bool isRunning() const { return call_.has_value(); }

 private:
    std::optional<NSRunLoop::Call> call_;
};
