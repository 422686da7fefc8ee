#include "backends/pulse/WriteQueue.hpp"

namespace pulse {

void WriteQueue::set(const VolumeObject& object, const Setting& setting, Repeat repeat) {
    const auto [found, isNew] = entries_.try_emplace(object);
    Entry& entry = found->second;
    // On its way already: a second sending could undo what somebody else sets in between.
    const bool isSent = entry.stage == Stage::Sent || entry.stage == Stage::SentAgain;
    const Setting before = entry.wanted;
    entry.wanted.takeFrom(setting);
    const bool isOnItsWay = !isNew && isSent && entry.wanted == before;
    if (isOnItsWay && repeat == Repeat::Skip) return;
    if (isNew || entry.stage == Stage::Confirming)
        send(object, entry);
    else
        entry.stage = Stage::SentAndOvertaken;
}

std::optional<Setting> WriteQueue::pending(const VolumeObject& object) const {
    const auto found = entries_.find(object);
    if (found == entries_.end()) return std::nullopt;
    return found->second.wanted;
}

void WriteQueue::acknowledged(const VolumeObject& object, std::uint64_t ticket) {
    Entry* const entry = awaiting(object, ticket);
    if (!entry || entry->stage == Stage::Confirming) return;
    if (entry->stage == Stage::SentAndOvertaken) return send(object, *entry);
    entry->stage = Stage::Confirming;
    confirm_(object, ticket);
}

void WriteQueue::unheeded(const VolumeObject& object, std::uint64_t ticket) {
    Entry* const entry = awaiting(object, ticket);
    if (entry && entry->stage == Stage::Sent) return send(object, *entry, Stage::SentAgain);
    acknowledged(object, ticket);
}

void WriteQueue::confirmed(const VolumeObject& object, std::uint64_t ticket) {
    const Entry* const entry = awaiting(object, ticket);
    if (entry && entry->stage == Stage::Confirming) entries_.erase(object);
}

WriteQueue::Entry* WriteQueue::awaiting(const VolumeObject& object, std::uint64_t ticket) {
    const auto found = entries_.find(object);
    const bool isAwaiting = found != entries_.end() && found->second.ticket == ticket;
    return isAwaiting ? &found->second : nullptr;
}

void WriteQueue::send(const VolumeObject& object, Entry& entry, Stage stage) {
    entry.stage = stage;
    entry.ticket = ++lastTicket_;
    send_(object, entry.wanted, entry.ticket);
}

}  // namespace pulse
