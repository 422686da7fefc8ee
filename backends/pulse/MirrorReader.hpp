#pragma once

#include "backends/pulse/PulseContext.hpp"
#include "backends/pulse/ServerMirror.hpp"
#include "platform/foundation/OneShotTimer.hpp"

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace pulse {

/// Keeps the mirror after the server: reads every part at first, and a part again whenever it is
/// told to. One read under way for each part, and one more behind it, however often it is told.
class MirrorReader {
 public:
    /// How far apart reads of a part begin at least while events of it flood in.
    static constexpr double pauseSeconds = 0.005;
    static constexpr double heldSeconds = 0.25;

    /// All three outlive the reader; no answer reaches it after the context is gone. `changed` is
    /// called after each read.
    MirrorReader(PulseContext& context, ServerMirror& mirror, std::function<void(Part)> changed);
    MirrorReader(const MirrorReader&) = delete;
    MirrorReader& operator=(const MirrorReader&) = delete;

    /// The part may have changed: reads it, the first time at once.
    void refresh(Part part);
    /// Reads the parts without a pause. `afterwards` is called when reads that began after this
    /// call are through.
    void refresh(const std::vector<Part>& parts, const std::function<void()>& afterwards);
    /// The parts are about to change in many places at once, and somebody will wait for a read
    /// afterwards: until then, and for no longer than heldSeconds, none begins by an event.
    void hold(const std::vector<Part>& parts);
    /// Whether each part has been read.
    bool isComplete() const;

 private:
    using Waiting = std::vector<std::function<void()>>;
    struct Reading {
        enum class Stage { Idle, Pausing, UnderWay, UnderWayAndOutdated };
        Stage stage = Stage::Idle;
        bool wasRead = false;
        double beganSeconds = 0;      // On the run loop's clock.
        double heldUntilSeconds = 0;  // The same.
        OneShotTimer pause;
        Waiting waitingForThis;
        Waiting waitingForNext;
    };

    Reading& readingOf(Part part) { return readings_[static_cast<std::size_t>(part)]; }
    void beginSoon(Part part);
    void begin(Part part);
    void ask(Part part);
    template <class Taken>
    auto taking(Part part, Taken ServerMirror::*place);
    void finish(Part part);

    PulseContext& context_;
    ServerMirror& mirror_;
    std::function<void(Part)> changed_;
    std::array<Reading, partCount> readings_;  // By Part.
};

}  // namespace pulse
