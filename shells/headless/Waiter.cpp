#include "shells/headless/Waiter.hpp"

#include <glib.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <vector>

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

/// The shorter of two timeouts in milliseconds; a negative one is infinite.
int shorter(int one, int other) {
    return one < 0 || other < 0 ? std::max(one, other) : std::min(one, other);
}

/// One iteration of the default main context that polls the input together with the context's
/// descriptors. A source for the input would have to be added and removed in each iteration, and a
/// context whose descriptors change wakes itself: it would never sleep.
class GLibWaiter : public Waiter {
 public:
    Woken wait(int input, std::optional<double> seconds) override {
        if (g_main_context_acquire(context_) == FALSE) return Woken::Failed;
        const Woken woken = turn(input, timeoutFor(seconds));
        g_main_context_release(context_);
        return woken;
    }

 private:
    Woken turn(int input, int inputTimeout) {
        gint priority = 0;
        gint timeout = 0;
        g_main_context_prepare(context_, &priority);
        const gint count = query(priority, timeout);
        GPollFD& inputState = polled_[static_cast<std::size_t>(count)];
        inputState = {input, G_IO_IN, 0};  // Ignored when it is negative.
        const gint ready = g_main_context_get_poll_func(context_)(
            polled_.data(), static_cast<guint>(count) + 1, shorter(timeout, inputTimeout));
        const bool hasFailed = ready < 0 && errno != EINTR;
        const bool hasInput = ready > 0 && inputState.revents != 0;
        if (g_main_context_check(context_, priority, polled_.data(), count) != FALSE)
            g_main_context_dispatch(context_);
        if (hasFailed) return Woken::Failed;
        return hasInput ? Woken::Input : Woken::Other;
    }

    /// Fills polled_ with the context's descriptors plus one free entry; returns how many they are.
    gint query(gint priority, gint& timeout) {
        for (;;) {
            const auto room = static_cast<gint>(polled_.size()) - 1;
            const gint count =
                g_main_context_query(context_, priority, &timeout, polled_.data(), room);
            if (count <= room) return count;
            polled_.resize(static_cast<std::size_t>(count) + 1);
        }
    }

    GMainContext* context_ = g_main_context_default();
    std::vector<GPollFD> polled_ = std::vector<GPollFD>(1);
};

}  // namespace

std::unique_ptr<Waiter> makePollingWaiter() {
    return std::make_unique<PollingWaiter>();
}

std::unique_ptr<Waiter> makeGLibWaiter() {
    return std::make_unique<GLibWaiter>();
}

}  // namespace headless
