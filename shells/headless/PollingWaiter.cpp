#include "shells/headless/Waiter.hpp"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cmath>

namespace headless {

int timeoutFor(const std::optional<double>& seconds) {
    if (!seconds) return -1;
    const double bounded = std::clamp(*seconds, 0.0, longestWait);
    return static_cast<int>(std::ceil(bounded * millisecondsPerSecond));
}

namespace {

class PollingWaiter : public Waiter {
 public:
    Woken wait(int input, std::optional<double> seconds) override {
        pollfd watched{.fd = input, .events = POLLIN, .revents = 0};
        const int count = poll(&watched, 1, timeoutFor(seconds));  // Ignores a negative input.
        if (count < 0) return errno == EINTR ? Woken::Other : Woken::Failed;
        return count == 0 ? Woken::Other : Woken::Input;
    }
};

}  // namespace

std::unique_ptr<Waiter> makePollingWaiter() {
    return std::make_unique<PollingWaiter>();
}

}  // namespace headless
