#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

/// The main loop's timers, and the clock for everything on the main thread:
///
///     NSRunLoop& loop = NSRunLoop::mainRunLoop();
///     const auto call = loop.performAfterDelay(0.25, [] { ... });
///     loop.withdraw(call);
///
/// A shell drives it: it calls runDue() when nextDue() has come, or moves a clock of its own in
/// tests. Code that needs one delayed call at a time has a OneShotTimer. Main thread only.
class NSRunLoop {
 public:
    /// A scheduled call: its time and its number, which identifies it.
    using Call = std::pair<double, std::uint64_t>;

    static NSRunLoop& mainRunLoop();

    /// Seconds on a monotonic clock with any origin.
    double currentTime() const;
    /// Replaces the clock, for virtual time; an empty function returns to the system's.
    void setClock(std::function<double()> clock);

    /// Calls the function from the loop, never from inside this call; those due at the same time
    /// in the order in which they were given. A negative delay counts as 0.
    Call performAfterDelay(double seconds, std::function<void()> function);
    /// Cancels a pending call, so that nothing wakes up for it. Has no effect for any other number.
    void withdraw(const Call& call) { pending_.erase(call); }

    /// Calls what is due at the clock's time, and what becomes due by those calls, until nothing
    /// is. Answers whether anything was called.
    bool runDue();
    /// The time of the next call on this clock. The shell's loop reads it before it sleeps.
    std::optional<double> nextDue() const;

 private:
    std::function<double()> clock_;
    std::map<Call, std::function<void()>> pending_;
    std::uint64_t number_ = 0;
};

/// A single delayed call from the main run loop. It is cancelled by cancel(), by a new start(), and
/// with the timer. The call may destroy the timer.
///
///     OneShotTimer timer;
///     timer.start(0.25, [this] { retry(); });
class OneShotTimer {
 public:
    OneShotTimer() = default;
    OneShotTimer(const OneShotTimer&) = delete;
    OneShotTimer& operator=(const OneShotTimer&) = delete;
    ~OneShotTimer() { cancel(); }

    /// Replaces a pending call.
    void start(double seconds, std::function<void()> function);
    void cancel();
    bool isRunning() const { return call_.has_value(); }

 private:
    std::optional<NSRunLoop::Call> call_;
};
