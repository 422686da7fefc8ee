#include "backends/pulse/Arrivals.hpp"

#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>

namespace pulse {

void Arrivals::expect(const VolumeObject& object, const std::vector<TargetWrite>& writes) {
    std::vector<Change>& changes = expectations_[object].changes;
    changes.clear();
    for (const TargetWrite& write : writes)
        if (const auto before = mirror_.volumeOf(write.target))
            changes.push_back({write.target, before->volume, write.volume});
}

void Arrivals::await(const VolumeObject& object, const Read& read,
                     const std::function<void()>& arrived) {
    expectations_[object].sinceSeconds = NSRunLoop::mainRunLoop().currentTime();
    look(object, read, arrived);
}

void Arrivals::look(const VolumeObject& object, const Read& read,
                    const std::function<void()>& arrived) {
    read([this, object, read, arrived] {
        const auto found = expectations_.find(object);
        if (found == expectations_.end()) return;
        Expectation& expectation = found->second;
        const double age = NSRunLoop::mainRunLoop().currentTime() - expectation.sinceSeconds;
        const bool allArrived = std::ranges::all_of(
            expectation.changes, [this](const Change& change) { return hasArrived(change); });
        if (allArrived || age >= longestSeconds) return arrived();
        expectation.retry.start(retrySeconds,
                                [this, object, read, arrived] { look(object, read, arrived); });
    });
}

// What a role keeps arrives late and inexactly; nothing of that is dropped. What is gone needs no
// waiting for either.
bool Arrivals::hasArrived(const Change& change) const {
    if (change.target.kind == Target::Kind::RoleEntry) return true;
    const auto now = mirror_.volumeOf(change.target);
    return !now || pa_cvolume_equal(&now->volume, &change.written) ||
           !pa_cvolume_equal(&now->volume, &change.before);
}

}  // namespace pulse
