#pragma once

#include "bench/comparison/Mixers.hpp"
#include "bench/peers/Screen.hpp"

#include <vector>

namespace comparison {

/// Milliseconds from the click that shows a mixer; one sample for each opening.
struct Openings {
    std::vector<double> painted;   ///< Until its window shows more than plain areas.
    std::vector<double> complete;  ///< Until the picture is final.
};

/// Measures how the mixers of a desk open.
class OpeningWatch {
 public:
    explicit OpeningWatch(Desk& desk) : desk_(desk), screen_(desk.session.server.displayName()) {}

    /// Opens the mixer, waits until nothing is painted any more, and closes it.
    void open(const Mixer& mixer, Openings& openings);
    /// The last opening's final picture.
    const peers::Picture& lastPicture() const { return last_; }

 private:
    Desk& desk_;
    peers::Screen screen_;
    peers::Picture last_;
};

}  // namespace comparison
