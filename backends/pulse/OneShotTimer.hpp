#pragma once

#include <functional>
#include <memory>

namespace pulse {

/// One call from the main run loop that can be withdrawn; it is withdrawn with the timer. The
/// call may destroy the timer.
class OneShotTimer {
 public:
    /// Replaces the call that is still to come.
    void start(double seconds, std::function<void()> function);
    void cancel() { pending_.reset(); }
    bool isRunning() const { return pending_ != nullptr; }

 private:
    std::shared_ptr<std::function<void()>> pending_;
};

}  // namespace pulse
