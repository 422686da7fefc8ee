#pragma once

#include "bench/comparison/Mixers.hpp"
#include "bench/peers/Screen.hpp"

#include <vector>

namespace comparison {

/// Milliseconds from the click that shows a mixer, one entry an opening.
struct Openings {
    std::vector<double> painted;   ///< Until its window shows more than plain areas.
    std::vector<double> complete;  ///< Until it looks as it will remain.
};

/// Looks at the mixers of a desk while they are opened.
class OpeningWatch {
 public:
    explicit OpeningWatch(Desk& desk) : desk_(desk), screen_(desk.session.server.displayName()) {}

    /// Opens it, waits until nothing is painted any more, and closes it.
    void open(const Mixer& mixer, Openings& openings);
    /// What the last one looked like.
    const peers::Picture& lastPicture() const { return last_; }

 private:
    Desk& desk_;
    peers::Screen screen_;
    peers::Picture last_;
};

}  // namespace comparison
