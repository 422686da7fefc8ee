#include "backends/pulse/connection/Operations.hpp"

#include <algorithm>

namespace pulse {

std::unique_ptr<PendingOperation> Operations::take(const PendingOperation* operation) {
    const auto found = std::find_if(pending_.begin(), pending_.end(),
                                    [&](const auto& each) { return each.get() == operation; });
    if (found == pending_.end()) return nullptr;
    std::unique_ptr<PendingOperation> taken = std::move(*found);
    pending_.erase(found);
    if (pending_.empty()) watchdog_.cancel();
    return taken;
}

void Operations::await(PendingOperation& query, OperationPtr operation) {
    query.operation_ = std::move(operation);
    if (!query.operation_) refusal_.start(0, [this] { failRefused(); });
    if (!watchdog_.isRunning()) watch();
}

// The library refuses at once what the protocol version or the connection's state does not allow.
void Operations::failRefused() {
    const auto refused = std::find_if(pending_.begin(), pending_.end(),
                                      [](const auto& each) { return !each->operation_; });
    if (refused == pending_.end()) return;
    refusal_.start(0, [this] { failRefused(); });
    (*refused)->fail();
}

void Operations::watch() {
    watchdog_.start(deadlineSeconds / looksUntilDeadline, [this] { look(); });
}

void Operations::look() {
    if (pending_.empty()) return;
    for (const auto& each : pending_)
        ++each->looks_;
    if (pending_.front()->looks_ >= looksUntilDeadline)
        hung_();
    else
        watch();
}

}  // namespace pulse
