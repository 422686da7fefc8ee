#pragma once

#include <memory>
#include <optional>

namespace headless {

inline constexpr double millisecondsPerSecond = 1000;
/// The longest wait in seconds: polling counts milliseconds in an int.
inline constexpr double longestWait = 3600;

/// How the host waits for its input, for time to pass, and for its device.
class Waiter {
 public:
    enum class Woken {
        Input,  ///< Input is available.
        Other,  ///< The time is over, or something else happened.
        Failed,
    };

    virtual ~Waiter() = default;
    /// Waits until `input` is readable (-1: no input), that many seconds have passed (nullopt: no
    /// limit) or the device had work to do.
    virtual Woken wait(int input, std::optional<double> seconds) = 0;
};

/// Seconds as the timeout that polling takes: milliseconds, rounded up, longestWait at most; -1 for
/// no end.
int timeoutFor(const std::optional<double>& seconds);

/// For a device without activity of its own.
std::unique_ptr<Waiter> makePollingWaiter();
/// For a device on GLib's default main context, which runs during the wait.
std::unique_ptr<Waiter> makeGLibWaiter();

}  // namespace headless
