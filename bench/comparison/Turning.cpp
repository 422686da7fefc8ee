#include "bench/comparison/Turning.hpp"

#include "tests/rigs/Waiting.hpp"

#include <cmath>

namespace comparison {
namespace {

// Until a mixer that has just opened shows all its volumes.
constexpr double settlingSeconds = 1;
// For some seconds after a recording, the panel's plugin may hide its slider.
constexpr double recordedSeconds = 3;
// Both streams together stay below full scale.
constexpr float level = 0.4F;

double decibels(double ratio) {
    constexpr double decibelsEachPower = 20;
    return decibelsEachPower * std::log10(ratio);
}

}  // namespace

Turning turnMusicDown(const Mixer& mixer, Rows rows, const std::string& file) {
    Desk desk({.rows = rows, .level = level});
    const double music = desk.loudnessOfMusic();
    const double ringtone = desk.loudnessOfRingtone();
    rigs::runFor(recordedSeconds);
    desk.click(mixer.approach(desk));
    const CGRect window = desk.waitForWindow(mixer.windowClass, leastHeight);
    rigs::runFor(settlingSeconds);
    desk.clickSlowly(mixer.half(window));
    rigs::runFor(settlingSeconds);
    desk.session.screen.picture().keep(file);
    return {desk.clicks(), decibels(desk.loudnessOfMusic() / music),
            decibels(desk.loudnessOfRingtone() / ringtone)};
}

}  // namespace comparison
