#pragma once

#include "backends/pulse/PulseAudioController.hpp"
#include "backends/pulse/ServerMirror.hpp"
#include "platform/foundation/OneShotTimer.hpp"

#include <functional>
#include <utility>

namespace pulse {

/// Asks again and again, on servers that don't announce changes of the role entries and do not
/// always announce another default device, for what they may not have told; while somebody observes
/// the volume notification and looks at what it tells. Nothing wakes up otherwise.
class RolePoller {
 public:
    static constexpr double intervalSeconds = 0.25;

    /// `mirror` outlives the poller. `poll` asks the server.
    RolePoller(const ServerMirror& mirror, std::function<void()> poll)
        : mirror_(mirror), poll_(std::move(poll)) {}

    /// Somebody asks for a role's volume: what is known may be old, and he may go on observing.
    void lookedAt();
    using Attention = PulseAudioController::Attention;
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
