#include "backends/pulse/ConnectionMachine.hpp"

#include <algorithm>

namespace pulse {

std::uint64_t ConnectionMachine::attempt() {
    state_ = ConnectionState::Connecting;
    return ++generation_;
}

bool ConnectionMachine::becameReady(std::uint64_t generation) {
    if (generation != generation_ || state_ != ConnectionState::Connecting) return false;
    state_ = ConnectionState::Ready;
    retryDelaySeconds_ = firstRetryDelaySeconds;
    return true;
}

bool ConnectionMachine::failed(std::uint64_t generation) {
    const bool alive = state_ == ConnectionState::Connecting || state_ == ConnectionState::Ready;
    if (generation != generation_ || !alive) return false;
    state_ = ConnectionState::Lost;
    return true;
}

double ConnectionMachine::waitForRetry() {
    state_ = ConnectionState::Retrying;
    const double delay = retryDelaySeconds_;
    retryDelaySeconds_ = std::min(2 * delay, longestRetryDelaySeconds);
    return delay;
}

bool ConnectionMachine::serverAppeared() {
    retryDelaySeconds_ = firstRetryDelaySeconds;
    return state_ == ConnectionState::Retrying;
}

}  // namespace pulse
