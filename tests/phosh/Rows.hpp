#pragma once

#include "tests/wayland/Screenshot.hpp"

#include <vector>

namespace test {

/// A slider's filled part as it is seen on the page, in pixels.
struct FilledTrack {
    int y = 0;       ///< Of its middle.
    int left = 0;    ///< Its first pixel.
    int length = 0;  ///< Up to the thumb: in proportion to the value.
};

/// The sliders of the default skin that are not at their left end, from top to bottom.
std::vector<FilledTrack> filledTracks(const Screenshot& picture);

}  // namespace test
