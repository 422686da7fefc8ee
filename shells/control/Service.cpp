#include "shells/control/Service.hpp"

#include "backends/pulse/PulseServer.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>

namespace control {
namespace {

using State = SoundServer::State;

/// Wakes the main loop after that many seconds.
class Alarm {
 public:
    explicit Alarm(double seconds) {
        timer_.start(seconds, [this] { isOver_ = true; });
    }
    bool isOver() const { return isOver_; }

 private:
    bool isOver_ = false;
    OneShotTimer timer_;
};

}  // namespace

Service::Service(const NSString& server) : volumes_(pulse::connectToServer(server)) {
    volumes_->setRefusalHandler(
        [this](const std::string& /*category*/, const std::string& reason) { refusal_ = reason; });
}

bool Service::waitUntilReady(double timeout, double patience) {
    const Alarm impatience(patience);
    const auto isReady = [this] { return volumes_->state() == State::Ready; };
    waitUntil([&] { return isReady() || (impatience.isOver() && volumes_->whyUnavailable()); },
              std::max(timeout, patience));
    return isReady();
}

bool Service::waitUntilWritten(double seconds) {
    // Pending writes are lost when the connection ends, even if another server answers afterwards.
    const auto isLost = [this] { return volumes_->state() != State::Ready; };
    waitUntil([&] { return isLost() || !volumes_->isWriting(); }, seconds);
    return !isLost() && !volumes_->isWriting();
}

bool Service::waitUntil(const std::function<bool()>& condition, double seconds) {
    const Alarm deadline(seconds);
    while (!condition() && !deadline.isOver())
        g_main_context_iteration(nullptr, TRUE);
    return condition();
}

}  // namespace control
