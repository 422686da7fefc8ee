#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <string>

namespace pulse {

/// The name that captions show for an output. The built-in speaker's begins with "Speaker", on
/// which the binding of ringer and media hangs; a device that says nothing of itself counts as it.
std::string routeOfDevice(const Device& sink);
/// The same for an input; one that says nothing of itself is a "Microphone".
std::string routeOfInput(const Device& source);

bool isBluetooth(const Device& device);

}  // namespace pulse
