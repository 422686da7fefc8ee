#include "backends/pulse/Arrivals.hpp"

#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>

namespace pulse {

void Arrivals::expect(const VolumeObject& object, const std::vector<TargetWrite>& writes) {
    std::vector<Change>& changes = expectations_[object].changes;
    changes.clear();
    for (const TargetWrite& write : writes)
        if (const auto before = mirror_.volumeOf(write.target))
            changes.push_back({write.target, before->volume, write.volume, write.mute});
}

void Arrivals::await(const VolumeObject& object, const Read& read, const Ended& ended) {
    expectations_[object].sinceSeconds = NSRunLoop::mainRunLoop().currentTime();
    look(object, read, ended);
}

void Arrivals::look(const VolumeObject& object, const Read& read, const Ended& ended) {
    read([this, object, read, ended] {
        const auto found = expectations_.find(object);
        if (found == expectations_.end()) return;
        Expectation& expectation = found->second;
        const double age = NSRunLoop::mainRunLoop().currentTime() - expectation.sinceSeconds;
        const bool allArrived = std::ranges::all_of(
            expectation.changes, [this](const Change& change) { return hasArrived(change); });
        if (allArrived) return ended(Outcome::Arrived);
        if (age >= longestSeconds) return ended(Outcome::Unheeded);
        expectation.retry.start(retrySeconds,
                                [this, object, read, ended] { look(object, read, ended); });
    });
}

// What a role keeps arrives late and inexactly; nothing of that is dropped. What is gone needs no
// waiting for either.
bool Arrivals::hasArrived(const Change& change) const {
    if (change.target.kind == Target::Kind::RoleEntry) return true;
    const auto now = mirror_.volumeOf(change.target);
    if (!now) return true;
    const bool hasMoved = !change.written || pa_cvolume_equal(&now->volume, &*change.written) ||
                          !pa_cvolume_equal(&now->volume, &change.before);
    return hasMoved && change.mute.value_or(now->mute) == now->mute;
}

}  // namespace pulse
