#pragma once

#include <cstdint>

namespace pulse {

enum class ConnectionState {
    Connecting,  ///< An attempt is under way.
    Ready,       ///< The server answers.
    Lost,        ///< The attempt or the connection failed; its context still has to be dropped.
    Retrying,    ///< Waiting for the next attempt.
};

/// The rules of connecting, without a server. Each attempt is a generation of its own, and what
/// an earlier one still has to say is ignored.
class ConnectionMachine {
 public:
    static constexpr double firstRetryDelaySeconds = 0.010;
    static constexpr double longestRetryDelaySeconds = 2.0;

    ConnectionState state() const { return state_; }
    std::uint64_t generation() const { return generation_; }

    /// Begins an attempt and answers its generation.
    std::uint64_t attempt();
    /// These answer whether the event was taken.
    bool becameReady(std::uint64_t generation);
    bool failed(std::uint64_t generation);
    /// After a failure: the seconds to wait before the next attempt, each time twice as many until
    /// a connection succeeds.
    double waitForRetry();
    /// A server has come up: no failure counts any more. Answers whether to attempt now instead of
    /// waiting.
    bool serverAppeared();

 private:
    ConnectionState state_ = ConnectionState::Retrying;
    std::uint64_t generation_ = 0;
    double retryDelaySeconds_ = firstRetryDelaySeconds;
};

}  // namespace pulse
