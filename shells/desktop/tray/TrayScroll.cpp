#include "shells/desktop/tray/TrayScroll.hpp"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr float changeOfANotch = 0.05F;
// Hosts of one family count eighths of a degree, positive away from the user, those of the other
// notches, positive towards him. Nobody turns a wheel by so many notches between two messages, nor
// by so few eighths.
constexpr int eighthsOfANotch = 120;
constexpr int leastEighths = 15;

bool isHorizontal(std::string_view orientation) {
    return orientation.starts_with('h') || orientation.starts_with('H');
}

}  // namespace

float volumeChangeByScroll(int delta, std::string_view orientation) {
    if (isHorizontal(orientation)) return 0;
    const bool inEighths = delta >= leastEighths || delta <= -leastEighths;
    const auto turn = static_cast<float>(delta);
    const float notchesAway = inEighths ? turn / eighthsOfANotch : -turn;
    return std::clamp(notchesAway * changeOfANotch, -1.0F, 1.0F);
}
