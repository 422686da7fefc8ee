#include "backends/pulse/Arrivals.hpp"

#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>

namespace pulse {
namespace {

double now() {
    return NSRunLoop::mainRunLoop().currentTime();
}

bool isEntry(const Target& target) {
    return target.kind == Target::Kind::RoleEntry;
}

bool isSame(const Target& target, const pa_cvolume& one, const pa_cvolume& other) {
    if (!isEntry(target)) return pa_cvolume_equal(&one, &other) != 0;
    return isSameForRole(levelFrom(one, Mute::Off).volume, levelFrom(other, Mute::Off).volume);
}

}  // namespace

void Arrivals::expect(const VolumeObject& object, const std::vector<TargetWrite>& writes) {
    Expectation& expectation = expectations_[object];
    expectation.number = ++lastNumber_;
    expectation.retry.cancel();
    expectation.changes.clear();
    for (const TargetWrite& write : writes)
        if (const auto before = mirror_.volumeOf(write.target))
            expectation.changes.push_back({write.target, before->volume, write.volume, write.mute});
}

void Arrivals::await(const VolumeObject& object, Until until, const Read& read,
                     const Ended& ended) {
    Expectation& expectation = expectations_[object];
    expectation.sinceSeconds = now();
    look({object, expectation.number, until, read, ended});
}

void Arrivals::look(const Awaited& awaited) {
    awaited.read([this, awaited, began = now()] { judge(awaited, began); });
}

// What a long read shows is as old as its beginning.
void Arrivals::judge(const Awaited& awaited, double readSeconds) {
    const auto found = expectations_.find(awaited.object);
    if (found == expectations_.end() || found->second.number != awaited.number) return;
    Expectation& expectation = found->second;
    const bool allArrived = std::ranges::all_of(expectation.changes, [&](const Change& change) {
        return hasArrived(change, awaited.until);
    });
    if (allArrived) return awaited.ended(Outcome::Arrived);
    const double longest = awaited.until == Until::Kept ? longestKeepingSeconds : longestSeconds;
    if (readSeconds - expectation.sinceSeconds >= longest) return awaited.ended(Outcome::Unheeded);
    expectation.retry.start(retrySeconds, [this, awaited] { look(awaited); });
}

bool Arrivals::areExact(const VolumeObject& object) const {
    const auto found = expectations_.find(object);
    return found == expectations_.end() ||
           std::ranges::all_of(found->second.changes,
                               [this](const Change& change) { return isExact(change); });
}

bool Arrivals::hasVolume(const Change& change, const pa_cvolume& shown) {
    return !change.written || isSame(change.target, shown, *change.written);
}

bool Arrivals::hasMute(const Change& change, Mute shown) {
    return change.mute.value_or(shown) == shown;
}

// What is gone needs no waiting for.
bool Arrivals::isExact(const Change& change) const {
    const auto shown = mirror_.volumeOf(change.target);
    return !shown || (hasVolume(change, shown->volume) && hasMute(change, shown->mute));
}

// Nothing of what is written to an entry is dropped, and what it shows in between is an earlier one
// of ours, which is late. Elsewhere another volume is a device's way of rounding.
bool Arrivals::hasArrived(const Change& change, Until until) const {
    if (isExact(change)) return true;
    if (isEntry(change.target)) return until == Until::Taken;
    if (until == Until::Kept) return true;
    const auto shown = mirror_.volumeOf(change.target);
    const bool hasMoved =
        hasVolume(change, shown->volume) || !pa_cvolume_equal(&shown->volume, &change.before);
    return hasMoved && hasMute(change, shown->mute);
}

}  // namespace pulse
