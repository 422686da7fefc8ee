#pragma once

#include "backends/pulse/ServerMirror.hpp"
#include "backends/pulse/ServerWrites.hpp"
#include "platform/foundation/OneShotTimer.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace pulse {

/// Waits for the mirror to show what was written. PipeWire acknowledges a volume or a mute before
/// its answers to us know of it, and drops the next one without a word if that is what they still
/// say. One that comes while a headset begins to play it takes and moves nothing by it. What it
/// keeps for a role is on its way to the session manager meanwhile, and lost when the writer leaves
/// before.
class Arrivals {
 public:
    /// A device may round what is written to what it has already: no longer than this is waited.
    static constexpr double longestSeconds = 0.05;
    /// A session manager may keep nothing for a role. One on a busy machine is late: what it keeps
    /// is not to be taken for lost.
    static constexpr double longestKeepingSeconds = 0.5;
    static constexpr double retrySeconds = 0.001;

    /// Taken: each device and stream has moved, so that the next volume may follow. Kept: what is
    /// kept for a role is what was written.
    enum class Until { Taken, Kept };
    /// Unheeded: something is still where it was, and was not written to be there.
    enum class Outcome { Arrived, Unheeded };
    using Ended = std::function<void(Outcome)>;

    /// Reads the mirror anew and calls back.
    using Read = std::function<void(std::function<void()> afterwards)>;

    /// `mirror` outlives this.
    explicit Arrivals(const ServerMirror& mirror) : mirror_(mirror) {}

    /// Remembers what the mirror says now of everything that is going to be written.
    void expect(const VolumeObject& object, const std::vector<TargetWrite>& writes);
    /// After the acknowledgement: reads until that is so, and calls `ended`, never from inside. The
    /// next expect() of the object ends it without a call.
    void await(const VolumeObject& object, Until until, const Read& read, const Ended& ended);
    /// Whether the mirror shows everything exactly as it was written.
    bool areExact(const VolumeObject& object) const;
    /// Forgets everything, for a connection that is gone.
    void clear() { expectations_.clear(); }

 private:
    struct Change {
        Target target;
        pa_cvolume before{};
        std::optional<pa_cvolume> written{};
        std::optional<Mute> mute{};
    };
    struct Expectation {
        std::vector<Change> changes;
        std::uint64_t number = 0;
        double sinceSeconds = 0;  // On the run loop's clock.
        OneShotTimer retry;
    };
    struct Awaited {
        VolumeObject object;
        std::uint64_t number;
        Until until;
        Read read;
        Ended ended;
    };

    void look(const Awaited& awaited);
    void judge(const Awaited& awaited, double readSeconds);
    static bool hasVolume(const Change& change, const pa_cvolume& shown);
    static bool hasMute(const Change& change, Mute shown);
    bool isExact(const Change& change) const;
    bool hasArrived(const Change& change, Until until) const;

    const ServerMirror& mirror_;
    std::map<VolumeObject, Expectation> expectations_;
    std::uint64_t lastNumber_ = 0;
};

}  // namespace pulse
