#pragma once

#include "backends/pulse/ServerMirror.hpp"
#include "backends/pulse/ServerWrites.hpp"
#include "platform/foundation/OneShotTimer.hpp"

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace pulse {

/// Waits for the mirror to show what was written. PipeWire acknowledges a volume or a mute before
/// its answers to us know of it, and drops the next one without a word if that is what they still
/// say. One that comes while a headset begins to play it takes and moves nothing by it.
class Arrivals {
 public:
    /// A device may round what is written to what it has already: no longer than this is waited.
    static constexpr double longestSeconds = 0.05;
    static constexpr double retrySeconds = 0.001;

    /// Unheeded: something is still where it was, and was not written to be there.
    enum class Outcome { Arrived, Unheeded };
    using Ended = std::function<void(Outcome)>;

    /// Reads the mirror anew and calls back.
    using Read = std::function<void(std::function<void()> afterwards)>;

    /// `mirror` outlives this.
    explicit Arrivals(const ServerMirror& mirror) : mirror_(mirror) {}

    /// Remembers what the mirror says now of everything that is going to be written.
    void expect(const VolumeObject& object, const std::vector<TargetWrite>& writes);
    /// After the acknowledgement: reads until each volume is the one that was written, or another
    /// one than before, and each mute as written, and calls `ended`, never from inside.
    void await(const VolumeObject& object, const Read& read, const Ended& ended);
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
        double sinceSeconds = 0;  // On the run loop's clock.
        OneShotTimer retry;
    };

    void look(const VolumeObject& object, const Read& read, const Ended& ended);
    bool hasArrived(const Change& change) const;

    const ServerMirror& mirror_;
    std::map<VolumeObject, Expectation> expectations_;
};

}  // namespace pulse
