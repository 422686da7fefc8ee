#include "shells/headless/Timeline.hpp"

#include "platform/foundation/NSRunLoop.hpp"
#include "platform/uikit/UIAnimator.hpp"

#include <algorithm>
#include <stdexcept>

namespace headless {
namespace {

constexpr double frameSeconds = 1.0 / 60;

NSRunLoop& loop() {
    return NSRunLoop::mainRunLoop();
}

}  // namespace

Timeline::Timeline(ClockKind kind, Waiter& waiter) : kind_(kind), waiter_(waiter) {
    if (kind_ == ClockKind::Manual) loop().setClock([this] { return manualTime_; });
}

Timeline::~Timeline() {
    if (kind_ == ClockKind::Manual) loop().setClock({});
}

Problem Timeline::settle() {
    Problem first;
    for (;;) {
        try {
            if (!loop().runDue()) return first;
        } catch (const std::out_of_range& error) {
            if (!first) first = error.what();
        }
    }
}

Problem Timeline::advance(double seconds, const std::function<bool()>& isEnough) {
    const double target = now() + seconds;
    Problem first = settle();
    showFrame();
    while (!(isEnough && isEnough()) && now() < target) {
        moveTo(nextStop(target));
        const Problem problem = settle();
        if (!first) first = problem;
        showFrame();
    }
    return first;
}

std::optional<double> Timeline::timeUntilDue() const {
    if (kind_ == ClockKind::Manual) return std::nullopt;
    if (UIAnimator::shared().isActive()) return frameSeconds;
    const std::optional<double> due = loop().nextDue();
    return due ? std::optional(std::max(0.0, *due - now())) : std::nullopt;
}

void Timeline::showFrame() {
    if (UIAnimator::shared().isActive()) UIAnimator::shared().advance(now());
}

double Timeline::now() const {
    return loop().currentTime();
}

double Timeline::nextStop(double target) const {
    double stop = target;
    if (UIAnimator::shared().isActive()) stop = std::min(stop, now() + frameSeconds);
    if (const auto due = loop().nextDue()) stop = std::min(stop, *due);
    return stop;
}

void Timeline::moveTo(double time) {
    if (kind_ == ClockKind::Manual)
        manualTime_ = std::max(manualTime_, time);
    else
        waiter_.wait(-1, time - now());
}

}  // namespace headless
