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

/// Drives the main loop and the animations by the clock of the session's choice. Seconds.
class Timeline {
 public:
    /// The waiter is how the real clock's time passes; it outlives this.
    Timeline(ClockKind kind, Waiter& waiter);
    ~Timeline();
    Timeline(const Timeline&) = delete;
    Timeline& operator=(const Timeline&) = delete;

    /// Calls what is due now and what becomes due by it, all of it even when a call fails; answers
    /// the first failure.
    Failure settle();
    /// Moves the clock on, or waits with the real one, and runs what comes due on the way, the
    /// animations in steps of a frame. Ends before its time as soon as it is enough.
    Failure advance(double seconds, const std::function<bool()>& isEnough = {});
    /// With the real clock: how long nothing will be due; nullopt when nothing is to come, and
    /// with the manual clock.
    std::optional<double> timeUntilDue() const;
    /// One frame of the animations, if there are any.
    void showFrame();

 private:
    double now() const;
    double nextStop(double target) const;
    /// The real clock's may end before that time, when something has happened.
    void moveTo(double time);

    ClockKind kind_;
    Waiter& waiter_;
    double manualTime_ = 0;
};

}  // namespace headless
