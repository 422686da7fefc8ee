#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace pulse {

/// Remembers the volume that the user gave to an application's streams or to conferences, for
/// those that come later. What somebody else does to a stream that has that volume is remembered
/// in its place; an object that the user never moved is left alone. A role is remembered so on
/// PipeWire, which gives its streams what it keeps late, inexactly or not at all, until that
/// becomes something else. Plain rules, without a server.
class StreamMemory {
 public:
    /// For so long a stream is new: what happens to its volume is the server's or its program's
    /// way of starting, and no wish to be remembered.
    static constexpr double newSeconds = 0.3;

    /// The user moved the object, which consists of what the mirror has.
    void remember(const VolumeObject& object, float fraction, const ServerMirror& mirror,
                  double nowSeconds);
    std::optional<float> remembered(const VolumeObject& object) const;

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
        double sinceSeconds = 0;
        Claim claim = Claim::Ours;
    };
    struct Memory {
        float fraction = 0;
        std::map<std::uint32_t, Heard> heard;  // By the stream's index.
    };

    static bool isConcernedWith(const VolumeObject& object, const ServerMirror& mirror);
    bool isClaimed(std::uint32_t streamIndex) const;
    bool observe(Memory& memory, const Stream& stream, double nowSeconds, bool moving);

    std::map<VolumeObject, Memory> memories_;
};

}  // namespace pulse
