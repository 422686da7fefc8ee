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
    timer_.start(intervalSeconds, [this] { tick(); });
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
