#pragma once

#include "bench/comparison/Mixers.hpp"

namespace comparison {

/// What came of turning the music down to about a half, as it is heard at the output.
struct Turning {
    int clicks = 0;
    double music = 0;     ///< Decibels it became louder; so less than 0.
    double ringtone = 0;  ///< The same.
};

/// Does it on a desk of its own. Leaves a picture of the screen as FILE.png.
Turning turnMusicDown(const Mixer& mixer, Rows rows, const std::string& file);

}  // namespace comparison
