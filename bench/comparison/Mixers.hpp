#pragma once

#include "bench/comparison/Desk.hpp"

#include <string>
#include <vector>

namespace comparison {

/// A mixer as it is used with the mouse.
struct Mixer {
    std::string name;
    std::string windowClass;
    /// Does everything before the click that shows it; returns where that click goes.
    CGPoint (*approach)(Desk& desk);
    /// Where to click on its slider to set the music to about a half, once it is shown.
    CGPoint (*half)(const CGRect& window);
    /// `window` is the id of the window to close.
    void (*close)(Desk& desk, unsigned long window);
};

/// Pixels. Lower windows are not mixers but the panel or tooltips.
inline constexpr CGFloat leastHeight = 60;

Mixer ourMixer();
/// Our mixer with a third row, for the player.
Mixer ourMixerWithThePlayer();
/// Our mixer after "Keep them apart".
Mixer ourMixerKeepingApart();
Mixer panelsMixer();
Mixer pavucontrol();

}  // namespace comparison
