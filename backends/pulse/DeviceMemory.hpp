#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace pulse {

/// A volume that a device has to be moved to.
struct DeviceVolume {
    VolumeObject device;
    float fraction = 0;
};

/// Holds a Bluetooth output at what the user gives it while it is coming. PipeWire takes the
/// headset's own volume a fifth of a second after the connection, and its session manager restores
/// one of its own, both over whatever was set meanwhile: that is their way of starting, and the
/// user moved it last. On PulseAudio nothing is held. Plain rules, without a server.
class DeviceMemory {
 public:
    /// For so long a device is new, seconds: several times what the servers take on a machine with
    /// nothing else to do.
    static constexpr double newSeconds = 1;

    /// The user moved the object.
    void remember(const VolumeObject& object, float fraction, double nowSeconds);
    /// Compares with what the server says now. Answers what was moved away from where the user
    /// moved it to; each is answered once, so that nobody is fought. `isMoving` tells whether we
    /// are moving one.
    std::vector<DeviceVolume> observe(const ServerMirror& mirror, double nowSeconds,
                                      const std::function<bool(const VolumeObject&)>& isMoving);
    /// The connection is gone.
    void clear() { devices_.clear(); }

 private:
    struct Known {
        std::uint32_t index = 0;  ///< Another one for each profile, under the same name.
        double sinceSeconds = 0;
        std::optional<float> given{};
        bool isNew(double nowSeconds) const { return nowSeconds - sinceSeconds < newSeconds; }
    };

    void meet(const ServerMirror& mirror, double nowSeconds);

    std::map<std::string, Known> devices_;  // By name.
};

}  // namespace pulse
