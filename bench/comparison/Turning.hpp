#pragma once

#include "bench/comparison/Mixers.hpp"

namespace comparison {

/// The effect of turning the music down to about a half, measured at the output.
struct Turning {
    int clicks = 0;
    double music = 0;     ///< Decibels; negative for quieter.
    double ringtone = 0;  ///< The same.
};

/// Measures on a new desk, and saves a picture of the screen as FILE.png.
Turning turnMusicDown(const Mixer& mixer, Rows rows, const std::string& file);

}  // namespace comparison
