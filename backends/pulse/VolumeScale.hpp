#pragma once

#include "platform/celestial/AVSystemController.hpp"

#include <pulse/volume.h>

namespace pulse {

using Mute = AVSystemController::Mute;
using Level = AVSystemController::Level;

/// The server's units for a fraction from 0 to 1: a plain ratio, which is what every mixer of the
/// desktop shows as percent. Kept within 0 to 1; not a number counts as silence.
pa_volume_t rawFromFraction(float fraction);
/// The way back; what is amplified above 100 % shows as 1.
float fractionFromRaw(pa_volume_t raw);

/// What a device or a stream is at: its loudest channel.
Level levelFrom(const pa_cvolume& volume, Mute mute);

/// Whether both are one volume of a role: PipeWire keeps six decimals of a role's loudness, which
/// is the volume's third power.
bool isSameForRole(float one, float other);

}  // namespace pulse
