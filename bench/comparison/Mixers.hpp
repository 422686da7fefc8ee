#pragma once

#include "bench/comparison/Desk.hpp"

#include <string>
#include <vector>

namespace comparison {

/// One of the mixers as somebody at the desk uses it with the mouse.
struct Mixer {
    std::string name;
    std::string windowClass;
    /// Everything before the click that shows it; answers where that click goes.
    CGPoint (*approach)(Desk& desk);
    /// Where a click on its slider turns the music to about a half, once it is shown.
    CGPoint (*half)(const CGRect& window);
    /// `window` is the server's number for what is closed.
    void (*close)(Desk& desk, unsigned long window);
};

/// Windows that are less tall are no mixers: the panel itself, a tooltip. Pixels.
inline constexpr CGFloat leastHeight = 60;

Mixer ourMixer();
/// The same with a row of the player's own, the third.
Mixer ourMixerWithThePlayer();
Mixer panelsMixer();
Mixer pavucontrol();

}  // namespace comparison
