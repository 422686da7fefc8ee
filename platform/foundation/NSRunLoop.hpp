#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

/// The main loop's timers and the clock that everything on the main thread goes by. A shell drives
/// it: it calls runDue() when nextDue() has come, or moves a clock of its own in tests. Main
/// thread only.
class NSRunLoop {
 public:
    /// When a call is due, and its number, which makes it this one.
    using Call = std::pair<double, std::uint64_t>;

    static NSRunLoop& mainRunLoop();

    /// Seconds on a monotonic clock with any origin.
    double currentTime() const;
    /// Replaces the clock, for virtual time; an empty function returns to the system's.
    void setClock(std::function<double()> clock);

    /// Calls the function from the loop, never from inside this call; those due at the same time
    /// in the order in which they were given. A negative delay counts as 0.
    Call performAfterDelay(double seconds, std::function<void()> function);
    /// Withdraws a call that is still to come, so that nothing wakes for it. Does nothing to any
    /// other.
    void withdraw(const Call& call) { pending_.erase(call); }

    /// Calls what is due at the clock's time, and what becomes due by those calls, until nothing
    /// is. Answers whether anything was called.
    bool runDue();
    /// When the next call is due, on this clock. The shell's loop asks before it sleeps.
    std::optional<double> nextDue() const;

 private:
    std::function<double()> clock_;
    std::map<Call, std::function<void()>> pending_;
    std::uint64_t number_ = 0;
};
