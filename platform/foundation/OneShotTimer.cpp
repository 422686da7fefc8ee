#include "platform/foundation/OneShotTimer.hpp"

#include <utility>

void OneShotTimer::start(double seconds, std::function<void()> function) {
    cancel();
    call_ = NSRunLoop::mainRunLoop().performAfterDelay(seconds, [this, call = std::move(function)] {
        call_.reset();
        call();
    });
}

// Taken out of the loop, not only forgotten: nothing wakes up for it.
void OneShotTimer::cancel() {
    if (call_) NSRunLoop::mainRunLoop().withdraw(*std::exchange(call_, std::nullopt));
}
