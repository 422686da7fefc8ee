#include "tests/phosh/Rows.hpp"

namespace test {
namespace {

constexpr std::uint32_t filled = 0xFF0000;

/// The longest run of the colour in a row of pixels.
FilledTrack longestRun(const Screenshot& picture, int y) {
    FilledTrack longest;
    FilledTrack run{y, 0, 0};
    for (int x = 0; x < picture.width(); ++x) {
        if (picture.at(x, y) != filled) {
            run.length = 0;
            continue;
        }
        if (run.length == 0) run.left = x;
        ++run.length;
        if (run.length > longest.length) longest = run;
    }
    return longest;
}

}  // namespace

std::vector<FilledTrack> filledTracks(const Screenshot& picture) {
    constexpr int shortest = 16;  // Pixels: a track, and no letter.
    std::vector<FilledTrack> tracks;
    int thickness = 0;
    for (int y = 0; y < picture.height(); ++y) {
        const FilledTrack run = longestRun(picture, y);
        const bool isTrack = run.length >= shortest;
        thickness = isTrack ? thickness + 1 : 0;
        if (!isTrack) continue;
        // Its ends are round: the longest row of pixels counts.
        if (thickness == 1) tracks.push_back(run);
        if (run.length > tracks.back().length) tracks.back() = run;
    }
    return tracks;
}

}  // namespace test
