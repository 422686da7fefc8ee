#include "backends/pulse/WriteQueue.hpp"

namespace pulse {

void WriteQueue::set(const VolumeObject& object, float fraction, Repeat repeat) {
    const auto [found, isNew] = entries_.try_emplace(object);
    Entry& entry = found->second;
    // On its way already: a second sending could undo what somebody else sets in between.
    const bool isOnItsWay = !isNew && entry.stage == Stage::Sent && entry.wanted == fraction;
    if (isOnItsWay && repeat == Repeat::Skip) return;
    entry.wanted = fraction;
    if (isNew || entry.stage == Stage::Confirming)
        send(object, entry);
    else
        entry.stage = Stage::SentAndOvertaken;
}

std::optional<float> WriteQueue::pending(const VolumeObject& object) const {
    const auto found = entries_.find(object);
    if (found == entries_.end()) return std::nullopt;
    return found->second.wanted;
}

void WriteQueue::acknowledged(const VolumeObject& object, std::uint64_t ticket) {
    const auto found = entries_.find(object);
    if (found == entries_.end() || found->second.ticket != ticket) return;
    Entry& entry = found->second;
    if (entry.stage == Stage::SentAndOvertaken) {
        send(found->first, entry);
    } else if (entry.stage == Stage::Sent) {
        entry.stage = Stage::Confirming;
        confirm_(found->first, ticket);
    }
}

void WriteQueue::confirmed(const VolumeObject& object, std::uint64_t ticket) {
    const auto found = entries_.find(object);
    if (found == entries_.end() || found->second.ticket != ticket) return;
    if (found->second.stage == Stage::Confirming) entries_.erase(found);
}

void WriteQueue::send(const VolumeObject& object, Entry& entry) {
    entry.stage = Stage::Sent;
    entry.ticket = ++lastTicket_;
    send_(object, entry.wanted, entry.ticket);
}

}  // namespace pulse
