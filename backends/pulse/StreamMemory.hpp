#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace pulse {

/// Remembers the volume that the user gave to an application's streams or to conferences, and
/// whether he muted them, for those that come later. What somebody else does to a stream of them is
/// remembered in its place, and so is what he sets, while an application plays nothing, of what the
/// server keeps for it; an object that the user never moved is left alone. A role is remembered so
/// on PipeWire, which gives its streams what it keeps late, inexactly or not at all, until that
/// becomes something else; where it is not at all, that something else is remembered in its place.
/// Plain rules, without a server.
class StreamMemory {
 public:
    /// For so long a stream is new: what happens to it is the server's or its program's
    /// way of starting, and no wish to be remembered.
    static constexpr double newSeconds = 0.3;

    /// The user moved or muted the object, which was at `level` and consists of what the mirror
    /// has. Volumes that he never moved, and mutes that he never touched, are left to the server.
    void remember(const VolumeObject& object, const Setting& setting, const Level& level,
                  const ServerMirror& mirror, double nowSeconds);
    /// A row shows the role: what somebody else makes of one of its streams on PipeWire, which
    /// goes on keeping what was there before, is remembered although the user moved nothing.
    void watch(const VolumeObject& object, const ServerMirror& mirror, double nowSeconds);
    /// As watch(), for every role whose streams get nothing of what the server keeps for it: they
    /// get it from us, whoever has set it.
    void watchKeptRoles(const ServerMirror& mirror, double nowSeconds);
    /// What the object is at while it consists of nothing.
    std::optional<Level> remembered(const VolumeObject& object) const;
    /// What its new streams get.
    Setting settingFor(const VolumeObject& object) const;

    /// Compares with what the server says now. Answers the objects that have to be moved to what
    /// is remembered of them, for their new streams. `isMoving` tells whether we are moving one.
    std::vector<VolumeObject> observe(const ServerMirror& mirror, double nowSeconds,
                                      const std::function<bool(const VolumeObject&)>& isMoving);
    /// The connection is gone, and with it every stream.
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
        bool isVolumeGiven = false;  // To streams that come; else it is only shown.
        std::optional<Mute> mute{};
        bool isOfRole = false;
        bool isOfUser = false;         // And not of somebody who moved a stream since.
        std::optional<Level> entry{};  // What the server kept when it was last looked at.
        bool isGiven() const { return isVolumeGiven || mute; }
        bool isMetBy(const Stream& stream) const;
        bool isMetBy(const Level& kept) const;
        void take(const Level& kept);
        std::map<std::uint32_t, Heard> heard;  // By the stream's index.
    };

    static void followEntry(const VolumeObject& object, Memory& memory, const ServerMirror& mirror);
    Memory& memoryOf(const VolumeObject& object, const ServerMirror& mirror, double nowSeconds);
    static bool isConcernedWith(const VolumeObject& object, const ServerMirror& mirror);
    bool isClaimed(std::uint32_t streamIndex) const;
    bool observe(Memory& memory, const Stream& stream, double nowSeconds, bool moving);

    std::map<VolumeObject, Memory> memories_;
};

}  // namespace pulse
