#include "platform/foundation/NSRunLoop.hpp"

#include <chrono>
#include <memory>
#include <utility>

NSRunLoop& NSRunLoop::mainRunLoop() {
    // Never destroyed: pending calls may use objects that are destroyed earlier.
    static auto& loop = *std::make_unique<NSRunLoop>().release();
    return loop;
}

double NSRunLoop::currentTime() const {
    if (clock_) return clock_();
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

void NSRunLoop::setClock(std::function<double()> clock) {
    clock_ = std::move(clock);
}

NSRunLoop::Call NSRunLoop::performAfterDelay(double seconds, std::function<void()> function) {
    const Call call(currentTime() + (seconds > 0 ? seconds : 0), ++number_);
    if (function) pending_.emplace(call, std::move(function));
    return call;
}

bool NSRunLoop::runDue() {
    bool called = false;
    while (!pending_.empty() && pending_.begin()->first.first <= currentTime()) {
        // Taken out first: the function may throw, schedule, or run the loop itself.
        const auto due = pending_.extract(pending_.begin());
        called = true;
        due.mapped()();
    }
    return called;
}

std::optional<double> NSRunLoop::nextDue() const {
    if (pending_.empty()) return std::nullopt;
    return pending_.begin()->first.first;
}

void OneShotTimer::start(double seconds, std::function<void()> function) {
    cancel();
    call_ = NSRunLoop::mainRunLoop().performAfterDelay(seconds, [this, call = std::move(function)] {
        call_.reset();
        call();
    });
}

// Removed from the loop, so that nothing wakes up for it.
void OneShotTimer::cancel() {
    if (call_) NSRunLoop::mainRunLoop().withdraw(*std::exchange(call_, std::nullopt));
}
