#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <map>

namespace pulse {

/// Keeps the balance between an object's channels while its volume is moved. A volume near 0 has
/// no room for the balance, so it is taken from the volume that someone else set last, not from
/// our own last step.
class BalanceMemory {
 public:
    /// Call at the start of a movement, with the volume that the server reports.
    void observe(const VolumeObject& object, const pa_cvolume& reported);
    /// The channels' volumes with the loudest at `loudest`. Stereo for an object never observed.
    pa_cvolume volumeAt(const VolumeObject& object, pa_volume_t loudest);
    void clear() { memories_.clear(); }

 private:
    struct Memory {
        pa_cvolume balance{};
        pa_cvolume written{};
    };

    std::map<VolumeObject, Memory> memories_;
};

}  // namespace pulse
