#pragma once

#include "backends/pulse/connection/PulseContext.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"
#include "platform/celestial/SoundServer.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <array>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace pulse {

/// Keeps a mirror up to date. It reads every part at the start, and a part again when refresh() is
/// called, usually because the server announced an event. At any time one read of a part is pending
/// and at most one more is queued. Clients, whose changes are not announced, are read again when
/// the process of a stream is not known.
///
/// Reads that events cause are limited in rate. A writer that waits for the effect of a write reads
/// without that limit, and holds back the reads by events until then.
///
///     reader.refresh(Part::Sinks);                     // An event announced a change.
///     reader.refresh({Part::Sinks}, [] { ... });       // Read now, then go on.
class MirrorReader {
 public:
    /// Reads of a part by events start at least this many seconds apart.
    static constexpr double pauseSeconds = 0.005;
    static constexpr double heldSeconds = 0.25;

    /// `context` and `mirror` outlive the reader, and no answer reaches it after the context is
    /// destroyed. `changed` is called after each read.
    MirrorReader(PulseContext& context, ServerMirror& mirror, std::function<void(Part)> changed);
    MirrorReader(const MirrorReader&) = delete;
    MirrorReader& operator=(const MirrorReader&) = delete;

    /// The part may have changed: reads it, at once unless a read of it has just started.
    void refresh(Part part);
    /// Reads the parts without delay. `afterwards` is called when reads that started after this
    /// call have finished.
    void refresh(const std::vector<Part>& parts, const std::function<void()>& afterwards);
    /// The parts are about to change in many places, and a read without delay will follow. Until
    /// that read, and for no longer than heldSeconds, events start none.
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

/// Polls the server for what it does not announce. PipeWire before 1.2 sends no events for changes
/// of restore entries, and misses some for another default device. Polls only while the volume
/// notification is observed and a mixer is on screen; otherwise nothing wakes up.
class RolePoller {
 public:
    static constexpr double intervalSeconds = 0.25;

    /// `mirror` outlives the poller. `poll` reads from the server.
    RolePoller(const ServerMirror& mirror, std::function<void()> poll)
        : mirror_(mirror), poll_(std::move(poll)) {}

    /// A role's volume was requested: the known one may be out of date, and more requests may
    /// follow.
    void lookedAt();
    using Attention = SoundServer::Attention;
    void setAttention(Attention attention);
    void stop() { timer_.cancel(); }

 private:
    void tick();
    void poll();

    const ServerMirror& mirror_;
    std::function<void()> poll_;
    double polledSeconds_ = 0;  // On the run loop's clock.
    Attention attention_ = Attention::Watched;
    OneShotTimer timer_;
};

}  // namespace pulse
