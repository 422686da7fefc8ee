#include "platform/foundation/NSRunLoop.hpp"

#include <chrono>
#include <memory>
#include <utility>

NSRunLoop& NSRunLoop::mainRunLoop() {
    // Never destroyed: what waits in it may use objects that are gone by then.
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
