#pragma once

#include "backends/pulse/categories/VolumeObject.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace pulse {

/// A device and the volume to set it to.
struct DeviceVolume {
    VolumeObject device;
    float fraction = 0;
};

/// Keeps a Bluetooth output at the user's volume while it connects. PipeWire applies the headset's
/// own volume a fifth of a second after the connection, and its session manager restores a stored
/// one; both overwrite what the user has just set. PulseAudio does neither.
///
/// It works without a server: call remember() for what the user does and observe() whenever the
/// mirror has changed, and set the devices that observe() returns.
class DeviceMemory {
 public:
    /// How long a device counts as new, in seconds: several times what servers need on an idle
    /// machine.
    static constexpr double newSeconds = 1;

    /// The user has set the object's volume.
    void remember(const VolumeObject& object, float fraction, double nowSeconds);
    /// Compares with the server's current state. Returns the new devices that were moved away from
    /// the user's volume, each of them once only, so that another program can override it.
    /// `isMoving` tells whether a write of an object is pending.
    std::vector<DeviceVolume> observe(const ServerMirror& mirror, double nowSeconds,
                                      const std::function<bool(const VolumeObject&)>& isMoving);
    /// Call when the connection has ended.
    void clear() { devices_.clear(); }

 private:
    struct Known {
        std::uint32_t index = 0;  ///< Changes with each profile; the name does not.
        double sinceSeconds = 0;
        std::optional<float> given{};
        bool isNew(double nowSeconds) const { return nowSeconds - sinceSeconds < newSeconds; }
    };

    void meet(const ServerMirror& mirror, double nowSeconds);

    std::map<std::string, Known> devices_;  // By name.
};

}  // namespace pulse
