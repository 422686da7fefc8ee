#include "backends/pulse/VolumeScale.hpp"

#include <algorithm>
#include <cmath>

namespace pulse {

pa_volume_t rawFromFraction(float fraction) {
    const double kept = fraction > 0 ? std::min(static_cast<double>(fraction), 1.0) : 0.0;
    return static_cast<pa_volume_t>(std::lround(kept * PA_VOLUME_NORM));
}

float fractionFromRaw(pa_volume_t raw) {
    return static_cast<float>(std::min(raw, PA_VOLUME_NORM)) / static_cast<float>(PA_VOLUME_NORM);
}

Level levelFrom(const pa_cvolume& volume, Mute mute) {
    return {fractionFromRaw(pa_cvolume_max(&volume)), mute};
}

bool isSameForRole(float one, float other) {
    constexpr float rounding = 1e-6F;
    return std::abs(std::pow(one, 3.0F) - std::pow(other, 3.0F)) <= rounding;
}

}  // namespace pulse
