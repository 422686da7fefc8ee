#include "backends/pulse/RolePoller.hpp"

#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/foundation/NSRunLoop.hpp"

namespace pulse {
namespace {

constexpr Version firstThatAnnounces{1, 2, 0};

bool announcesRoles(const ServerInfo& server) {
    return !server.pipeWire || !(*server.pipeWire < firstThatAnnounces);
}

}  // namespace

void RolePoller::lookedAt() {
    if (announcesRoles(mirror_.server) || timer_.isRunning()) return;
    const double age = NSRunLoop::mainRunLoop().currentTime() - polledSeconds_;
    if (age >= intervalSeconds) poll();
    if (attention_ == Attention::Resting) return;
    timer_.start(intervalSeconds, [this] { tick(); });
}

void RolePoller::setAttention(Attention attention) {
    if (std::exchange(attention_, attention) == attention) return;
    if (attention == Attention::Resting)
        timer_.cancel();
    else
        lookedAt();
}

void RolePoller::tick() {
    const bool isObserved = NSNotificationCenter::defaultCenter().isObserved(
        AVSystemController_EffectiveVolumeDidChangeNotification);
    if (!isObserved) return;
    poll();
    timer_.start(intervalSeconds, [this] { tick(); });
}

void RolePoller::poll() {
    polledSeconds_ = NSRunLoop::mainRunLoop().currentTime();
    poll_();
}

}  // namespace pulse
