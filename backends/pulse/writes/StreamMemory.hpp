#pragma once

#include "backends/pulse/categories/VolumeObject.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace pulse {

/// Remembers the volume and mute that the user set for an application or for conferences, for
/// streams that start later. It works without a server: call remember() for what the user does, and
/// observe() whenever the mirror has changed; set the objects that observe() returns to
/// settingFor().
///
/// If another program changes one of the streams, or the server's entry of an application that
/// plays nothing, that becomes what is remembered. Objects that the user never set are left alone.
///
/// On PipeWire roles are remembered as well, because their entries reach new streams late,
/// inexactly or not at all. A remembered role lasts until its entry changes; if the server never
/// applies the entry to streams, the new entry is remembered instead.
class StreamMemory {
 public:
    /// How long a stream counts as new, in seconds. What changes within that time comes from the
    /// server or the program starting the stream, and is not remembered.
    static constexpr double newSeconds = 0.3;

    /// The user has set or muted the object, which was at `level`. Volumes and mutes that the user
    /// never set are left to the server.
    void remember(const VolumeObject& object, const Setting& setting, const Level& level,
                  const ServerMirror& mirror, double nowSeconds);
    /// A row shows the role. What another program makes of one of its streams on PipeWire, where
    /// the entry does not follow, is remembered even if the user set nothing.
    void watch(const VolumeObject& object, const ServerMirror& mirror, double nowSeconds);
    /// Does the same as watch() for every role whose new streams do not get the level in its entry:
    /// we apply it, whoever set it.
    void watchKeptRoles(const ServerMirror& mirror, double nowSeconds);
    /// The level that the object shows while it has no streams.
    std::optional<Level> remembered(const VolumeObject& object) const;
    /// The setting for the object's new streams.
    Setting settingFor(const VolumeObject& object) const;

    /// Compares with the server's current state. Returns the objects whose new streams have to be
    /// set to what is remembered. `isMoving` tells whether a write of an object is pending.
    std::vector<VolumeObject> observe(const ServerMirror& mirror, double nowSeconds,
                                      const std::function<bool(const VolumeObject&)>& isMoving);
    /// The connection has ended, and with it every stream.
    void forgetStreams();

 private:
    enum class Claim { Ours, AnotherObjects };
    struct Heard {
        pa_volume_t raw = 0;
        Mute mute = Mute::Off;
        double sinceSeconds = 0;
        Claim claim = Claim::Ours;
    };
    struct Memory {
        float fraction = 0;
        bool isVolumeGiven = false;  // To new streams; otherwise it is only shown.
        std::optional<Mute> mute{};
        bool isOfRole = false;
        bool isOfUser = false;         // Not of another program that moved a stream.
        double setSeconds = 0;         // When the user set it.
        std::optional<Level> entry{};  // As last seen in the mirror.
        bool isGiven() const { return isVolumeGiven || mute; }
        bool isMetBy(const SinkInput& stream) const;
        bool isMetBy(const Level& kept) const;
        void take(const Level& kept);
        std::map<std::uint32_t, Heard> heard;  // By the stream's index.
    };

    static void followEntry(const VolumeObject& object, Memory& memory, const ServerMirror& mirror,
                            double nowSeconds);
    Memory& memoryOf(const VolumeObject& object, const ServerMirror& mirror, double nowSeconds);
    static bool isConcernedWith(const VolumeObject& object, const ServerMirror& mirror);
    bool isClaimed(std::uint32_t sinkInputIndex) const;
    bool observe(Memory& memory, const SinkInput& stream, double nowSeconds, bool moving);

    std::map<VolumeObject, Memory> memories_;
};

}  // namespace pulse
