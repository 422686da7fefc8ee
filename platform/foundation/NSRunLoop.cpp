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

void NSRunLoop::performAfterDelay(double seconds, std::function<void()> function) {
    if (!function) return;
    const double due = currentTime() + (seconds > 0 ? seconds : 0);
    const bool isEarlier = pending_.empty() || due < pending_.begin()->first;
    pending_.emplace(due, std::move(function));
    if (isEarlier && wake_) wake_();
}

bool NSRunLoop::runDue() {
    bool called = false;
    while (!pending_.empty() && pending_.begin()->first <= currentTime()) {
        // Taken out first: the function may throw, schedule, or run the loop itself.
        const auto due = pending_.extract(pending_.begin());
        called = true;
        due.mapped()();
    }
    return called;
}

std::optional<double> NSRunLoop::nextDue() const {
    if (pending_.empty()) return std::nullopt;
    return pending_.begin()->first;
}

void NSRunLoop::setWakeHandler(std::function<void()> handler) {
    wake_ = std::move(handler);
}
