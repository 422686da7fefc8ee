#include "backends/pulse/OneShotTimer.hpp"

#include "platform/foundation/NSRunLoop.hpp"

#include <utility>

namespace pulse {

void OneShotTimer::start(double seconds, std::function<void()> function) {
    pending_ = std::make_shared<std::function<void()>>(std::move(function));
    NSRunLoop::mainRunLoop().performAfterDelay(
        seconds, [this, watch = std::weak_ptr<std::function<void()>>(pending_)] {
            // Expired when the timer was cancelled, started anew or destroyed: `this` is valid
            // only while the call is still wanted.
            const auto call = watch.lock();
            if (!call) return;
            pending_.reset();
            (*call)();
        });
}

}  // namespace pulse
