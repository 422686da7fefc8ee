#include "backends/pulse/writes/PendingWrite.hpp"

#include <algorithm>

namespace pulse {
namespace {

bool isEntry(const Target& target) {
    return target.kind == Target::Kind::RestoreEntry;
}

bool isSame(const Target& target, const pa_cvolume& one, const pa_cvolume& other) {
    if (!isEntry(target)) return pa_cvolume_equal(&one, &other) != 0;
    return isSameForRole(levelFrom(one, Mute::Off).volume, levelFrom(other, Mute::Off).volume);
}

}  // namespace

void PendingWrite::take(const Setting& setting, Repeat repeat) {
    Setting newest = wanted();
    newest.takeFrom(setting);
    // Sending a pending value twice could undo what another program sets in between.
    const bool isOnItsWay = !waiting_ && newest == sent_;
    if (!isOnItsWay || repeat == Repeat::Send) waiting_ = newest;
}

std::shared_ptr<PendingWrite> PendingWrite::succeededBy(const Setting& setting) const {
    Setting newest = wanted();
    newest.takeFrom(setting);
    auto successor = std::make_shared<PendingWrite>(object_, newest);
    successor->isMuteCertain_ = isMuteCertain_;
    return successor;
}

const Setting& PendingWrite::begin() {
    if (waiting_) {
        sent_ = *std::exchange(waiting_, std::nullopt);
        timesUnheeded_ = 0;
    }
    answersLeft_ = 1;
    error_ = PA_OK;
    return sent_;
}

void PendingWrite::expect(const std::vector<TargetWrite>& writes, const ServerMirror& mirror) {
    changes_.clear();
    for (const TargetWrite& write : writes) {
        if (write.mute) isMuteCertain_ = false;
        if (const auto before = mirror.volumeOf(write.target))
            changes_.push_back({write.target, before->volume, write.volume, write.mute});
    }
}

bool PendingWrite::takeAnswer(int error) {
    if (error_ == PA_OK) error_ = error;
    return --answersLeft_ == 0;
}

void PendingWrite::await(Until until, double nowSeconds) {
    until_ = until;
    awaitedSinceSeconds_ = nowSeconds;
}

// A long read shows the state at its start.
PendingWrite::Echo PendingWrite::echoIn(const ServerMirror& mirror, double readSeconds) const {
    const bool allArrived = std::ranges::all_of(
        changes_, [&](const Change& change) { return hasArrived(change, mirror); });
    if (allArrived) return Echo::Arrived;
    const double longest = until_ == Until::Kept ? longestKeepingSeconds : longestSeconds;
    return readSeconds - awaitedSinceSeconds_ >= longest ? Echo::Unheeded : Echo::Awaited;
}

bool PendingWrite::isExactIn(const ServerMirror& mirror) const {
    return std::ranges::all_of(changes_,
                               [&](const Change& change) { return isExact(change, mirror); });
}

bool PendingWrite::hasVolume(const Change& change, const pa_cvolume& shown) {
    return !change.written || isSame(change.target, shown, *change.written);
}

bool PendingWrite::hasMute(const Change& change, Mute shown) {
    return change.mute.value_or(shown) == shown;
}

// A target that has gone needs no wait.
bool PendingWrite::isExact(const Change& change, const ServerMirror& mirror) {
    const auto shown = mirror.volumeOf(change.target);
    return !shown || (hasVolume(change, shown->volume) && hasMute(change, shown->mute));
}

// No write to an entry is dropped, so another volume there is an earlier one of ours that arrives
// late. Elsewhere another volume is the device's rounding.
bool PendingWrite::hasArrived(const Change& change, const ServerMirror& mirror) const {
    if (isExact(change, mirror)) return true;
    if (isEntry(change.target)) return until_ == Until::Taken;
    if (until_ == Until::Kept) return true;
    const auto shown = mirror.volumeOf(change.target);
    const bool hasMoved =
        hasVolume(change, shown->volume) || !pa_cvolume_equal(&shown->volume, &change.before);
    return hasMoved && hasMute(change, shown->mute);
}

bool PendingWrite::mayRepeatUnheeded() {
    return !waiting_ && timesUnheeded_++ == 0;
}

bool PendingWrite::hasNext() {
    isConfirming_ = !waiting_;
    return !isConfirming_;
}

}  // namespace pulse
