#pragma once

#include <memory>
#include <optional>

namespace headless {

inline constexpr double millisecondsPerSecond = 1000;
/// Seconds; what waits counts in milliseconds, and an int must hold them.
inline constexpr double longestWait = 3600;

/// How the host waits: for its input, for time to pass, and for what its device lives on.
class Waiter {
 public:
    enum class Woken {
        Input,  ///< There is something to read.
        Other,  ///< The time is over, or something else has happened.
        Failed,
    };

    virtual ~Waiter() = default;
    /// Waits until `input` can be read (-1: there is none), that many seconds are over (nullopt:
    /// no end) or the device had something to do.
    virtual Woken wait(int input, std::optional<double> seconds) = 0;
};

/// Seconds as the timeout that polling takes: milliseconds, rounded up, longestWait at most; -1 for
/// no end.
int timeoutFor(const std::optional<double>& seconds);

/// For a device that does nothing by itself.
std::unique_ptr<Waiter> makePollingWaiter();
/// For a device that lives on GLib's default main context, which runs meanwhile.
std::unique_ptr<Waiter> makeGLibWaiter();

}  // namespace headless
