#pragma once

#include "backends/pulse/Arrivals.hpp"
#include "backends/pulse/BalanceMemory.hpp"
#include "backends/pulse/MirrorReader.hpp"
#include "backends/pulse/WriteQueue.hpp"
#include "platform/foundation/OneShotTimer.hpp"

#include <functional>
#include <map>
#include <optional>

namespace pulse {

/// Moves objects of the server that the mirror is a copy of, while there is a connection.
class VolumeWriter {
 public:
    /// How long PipeWire answers the old value of a role after it has taken a new one, and may
    /// lose it when the writer leaves.
    static constexpr double staleRoleSeconds = 0.1;

    /// `mirror` outlives the writer. `confirmed` is called whenever an object has arrived where it
    /// was moved to and the mirror says so.
    VolumeWriter(const ServerMirror& mirror, std::function<void()> confirmed);

    /// Both are valid until end().
    void begin(PulseContext& context, MirrorReader& reader);
    /// Drops what is on its way.
    void end();

    /// Moves the object and unmutes it. Nothing happens without a connection. With Repeat::Send
    /// also where the value is on its way already, for streams that have joined the object since.
    void set(const VolumeObject& object, float fraction,
             WriteQueue::Repeat repeat = WriteQueue::Repeat::Skip);
    /// What the object will be at once everything has arrived; nullopt when nothing is on its way.
    std::optional<float> pending(const VolumeObject& object) const {
        return writes_.pending(object);
    }
    bool isIdle() const { return writes_.isEmpty(); }

    void streamsChanged() { balances_.forgetStreamsMissingIn(mirror_); }

 private:
    void observeBalances(const VolumeObject& object);
    void send(const VolumeObject& object, float fraction, std::uint64_t ticket);
    void acknowledged(const VolumeObject& object, std::uint64_t ticket);
    void confirmInTime(const VolumeObject& object, std::uint64_t ticket);
    void confirm(const VolumeObject& object, std::uint64_t ticket);
    void read(const VolumeObject& object, const std::function<void()>& afterwards);
    void finish(const VolumeObject& object, std::uint64_t ticket);

    const ServerMirror& mirror_;
    std::function<void()> confirmed_;
    PulseContext* context_ = nullptr;
    MirrorReader* reader_ = nullptr;
    BalanceMemory balances_;
    Arrivals arrivals_;
    WriteQueue writes_;
    std::map<VolumeObject, OneShotTimer> stale_;  // Of roles.
};

}  // namespace pulse
