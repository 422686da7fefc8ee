#pragma once

#include <optional>

namespace rigs {

/// Watches how long the thread stays away from its loop: the time that a turn runs or is blocked,
/// without the time that it stands ready while the machine gives it no processor.
class TurnWatch {
 public:
    /// From the thread that is watched: once in every turn of its loop.
    void turn();
    /// The longest time between two turns so far, seconds.
    double longestSeconds() const { return longest_; }

 private:
    /// On a clock that stands still while the thread waits for a processor.
    std::optional<double> last_;
    double longest_ = 0;
};

}  // namespace rigs
