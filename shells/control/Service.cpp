#include "shells/control/Service.hpp"

#include "platform/foundation/NSRunLoop.hpp"

namespace control {
namespace {

using State = PulseAudioController::State;

}  // namespace

Service::Service(const NSString& server)
    : volumes_(std::make_shared<PulseAudioController>(server)) {}

bool Service::waitUntilReady(double seconds) {
    return waitUntil([this] { return volumes_->state() == State::Ready; }, seconds);
}

bool Service::waitUntilWritten(double seconds) {
    // What is on its way when the connection ends is lost, whoever answers afterwards.
    const auto isLost = [this] { return volumes_->state() != State::Ready; };
    waitUntil([&] { return isLost() || !volumes_->isWriting(); }, seconds);
    return !isLost() && !volumes_->isWriting();
}

bool Service::waitUntil(const std::function<bool()>& condition, double seconds) {
    const auto isOver = std::make_shared<bool>(false);
    NSRunLoop::mainRunLoop().performAfterDelay(seconds, [isOver] { *isOver = true; });
    while (!condition() && !*isOver)
        g_main_context_iteration(nullptr, TRUE);
    return condition();
}

}  // namespace control
