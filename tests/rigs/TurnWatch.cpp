#include "tests/rigs/TurnWatch.hpp"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <fstream>

namespace rigs {
namespace {

constexpr double nanosecond = 1e-9;

// What the kernel says that the thread has waited for a processor, nanoseconds; 0 from a kernel
// that doesn't count it.
std::uint64_t waitedNanoseconds() {
    std::ifstream file("/proc/thread-self/schedstat");
    std::uint64_t ran = 0;
    std::uint64_t waited = 0;
    file >> ran >> waited;
    return waited;
}

double ownSeconds() {
    for (;;) {
        const std::uint64_t waited = waitedNanoseconds();
        const std::chrono::duration<double> now =
            std::chrono::steady_clock::now().time_since_epoch();
        if (waitedNanoseconds() == waited)
            return now.count() - static_cast<double>(waited) * nanosecond;
    }
}

}  // namespace

void TurnWatch::turn() {
    const double now = ownSeconds();
    longest_ = std::max(longest_, now - last_.value_or(now));
    last_ = now;
}

}  // namespace rigs
