#include "backends/pulse/Operations.hpp"

#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>

namespace pulse {

std::unique_ptr<PendingOperation> Operations::take(const PendingOperation* operation) {
    const auto found = std::find_if(pending_.begin(), pending_.end(),
                                    [&](const auto& each) { return each.get() == operation; });
    if (found == pending_.end()) return nullptr;
    std::unique_ptr<PendingOperation> taken = std::move(*found);
    pending_.erase(found);
    return taken;
}

void Operations::await(PendingOperation& query, OperationPtr operation) {
    query.operation_ = std::move(operation);
    query.sinceSeconds_ = NSRunLoop::mainRunLoop().currentTime();
    if (!query.operation_) refusal_.start(0, [this] { failRefused(); });
    if (!watchdog_.isRunning()) watch(deadlineSeconds);
}

// The library refuses at once what the server's protocol or the connection's state doesn't allow.
void Operations::failRefused() {
    const auto refused = std::find_if(pending_.begin(), pending_.end(),
                                      [](const auto& each) { return !each->operation_; });
    if (refused == pending_.end()) return;
    refusal_.start(0, [this] { failRefused(); });
    (*refused)->fail();
}

void Operations::watch(double seconds) {
    watchdog_.start(seconds, [this] { checkOldest(); });
}

void Operations::checkOldest() {
    if (pending_.empty()) return;
    const double age = NSRunLoop::mainRunLoop().currentTime() - pending_.front()->sinceSeconds_;
    if (age >= deadlineSeconds)
        hung_();
    else
        watch(deadlineSeconds - age);
}

}  // namespace pulse
