#pragma once

#include <functional>
#include <map>
#include <optional>

/// The main loop's timers and the clock that everything on the main thread goes by. A shell drives
/// it: it calls runDue() when nextDue() has come, or moves a clock of its own in tests. Main
/// thread only.
class NSRunLoop {
 public:
    static NSRunLoop& mainRunLoop();

    /// Seconds on a monotonic clock with any origin.
    double currentTime() const;
    /// Replaces the clock, for virtual time; an empty function returns to the system's.
    void setClock(std::function<double()> clock);

    /// Calls the function from the loop, never from inside this call; those due at the same time
    /// in the order in which they were given. A negative delay counts as 0.
    void performAfterDelay(double seconds, std::function<void()> function);

    /// Calls what is due at the clock's time, and what becomes due by those calls, until nothing
    /// is. Answers whether anything was called.
    bool runDue();
    /// When the next call is due, on this clock.
    std::optional<double> nextDue() const;
    /// Called whenever nextDue() has become earlier, so that the shell's loop wakes in time.
    void setWakeHandler(std::function<void()> handler);

 private:
    std::function<double()> clock_;
    std::multimap<double, std::function<void()>> pending_;
    std::function<void()> wake_;
};
