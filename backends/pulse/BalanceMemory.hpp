#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <map>

namespace pulse {

/// Keeps the balance between a target's channels while its volume is moved. A volume near 0 has
/// no room for the balance, so it is taken from the volume that someone else set last, not from
/// our own last step.
class BalanceMemory {
 public:
    /// Call at the start of a movement, with the volume that the server reports.
    void observe(const Target& target, const pa_cvolume& reported);
    bool knows(const Target& target) const { return memories_.contains(target); }
    /// The channels' volumes with the loudest at `loudest`. Stereo for a target never observed.
    pa_cvolume volumeAt(const Target& target, pa_volume_t loudest);
    /// Forgets the streams that have ended.
    void forgetStreamsMissingIn(const ServerMirror& mirror);
    void clear() { memories_.clear(); }

 private:
    struct Memory {
        pa_cvolume balance{};
        pa_cvolume written{};
    };

    std::map<Target, Memory> memories_;
};

}  // namespace pulse
