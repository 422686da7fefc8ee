#pragma once

#include <pulse/volume.h>

namespace pulse {

enum class Mute { Off, On };

/// The server's units for a fraction from 0 to 1: a plain ratio, which is what every mixer of the
/// desktop shows as percent. Kept within 0 to 1; not a number counts as silence.
pa_volume_t rawFromFraction(float fraction);
/// The way back; what is amplified above 100 % shows as 1.
float fractionFromRaw(pa_volume_t raw);

/// What is heard of a device or a stream, 0 to 1: its loudest channel, nothing while it is muted.
float effectiveFraction(const pa_cvolume& volume, Mute mute);

}  // namespace pulse
