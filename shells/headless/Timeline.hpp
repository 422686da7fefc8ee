#pragma once

#include "shells/headless/Answer.hpp"
#include "shells/headless/Waiter.hpp"

#include <functional>
#include <optional>

namespace headless {

enum class ClockKind {
    Manual,  ///< Starts at 0 and moves only when it is told to.
    Real,    ///< The system's.
};

/// Drives the main loop and the animations with the session's clock. Seconds.
///
///     Timeline timeline(ClockKind::Manual, waiter);
///     timeline.advance(0.25);
class Timeline {
 public:
    /// `waiter` lets time pass with the real clock; it outlives this object.
    Timeline(ClockKind kind, Waiter& waiter);
    ~Timeline();
    Timeline(const Timeline&) = delete;
    Timeline& operator=(const Timeline&) = delete;

    /// Calls what is due now and what becomes due because of it, all of it even if a call fails;
    /// returns the first failure.
    Problem settle();
    /// Advances the clock, or waits with the real one, and runs what becomes due on the way,
    /// animations frame by frame. Ends early when `isEnough` returns true.
    Problem advance(double seconds, const std::function<bool()>& isEnough = {});
    /// With the real clock: the time until something is due; nullopt if nothing is scheduled, and
    /// with the manual clock.
    std::optional<double> timeUntilDue() const;
    /// Advances the animations by one frame, if any run.
    void showFrame();

 private:
    double now() const;
    double nextStop(double target) const;
    /// With the real clock it may end early, when something has happened.
    void moveTo(double time);

    ClockKind kind_;
    Waiter& waiter_;
    double manualTime_ = 0;
};

}  // namespace headless
