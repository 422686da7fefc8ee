#pragma once

#include "backends/pulse/VolumeObject.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace pulse {

/// Settings on their way to the server: one in flight for each object, and behind it only the
/// newest. An object stays pending until the server has been asked again after its last write, so
/// that no echo of an earlier one is taken for the truth.
class WriteQueue {
 public:
    /// Sends the setting; the answer is acknowledged() with the ticket.
    using Send =
        std::function<void(const VolumeObject&, const Setting& wanted, std::uint64_t ticket)>;
    /// Has the object read anew; the answer is confirmed() with the ticket, maybe from inside.
    using Confirm = std::function<void(const VolumeObject&, std::uint64_t ticket)>;

    /// Whether a value that is on its way already is sent behind itself again.
    enum class Repeat { Skip, Send };

    WriteQueue(Send send, Confirm confirm) : send_(std::move(send)), confirm_(std::move(confirm)) {}

    /// What the setting does not say stays as it was asked for before, while that is on its way.
    void set(const VolumeObject& object, const Setting& setting, Repeat repeat = Repeat::Skip);
    /// What the object will be once its writes are through.
    std::optional<Setting> pending(const VolumeObject& object) const;

    /// Whether every write is through.
    bool isEmpty() const { return entries_.empty(); }

    /// Answers to tickets that are not awaited any more are ignored.
    void acknowledged(const VolumeObject& object, std::uint64_t ticket);
    void confirmed(const VolumeObject& object, std::uint64_t ticket);
    /// Acknowledged, but it moved nothing: where no newer value waits, the same is sent a second
    /// time, and not a third.
    void unheeded(const VolumeObject& object, std::uint64_t ticket);

    /// Forgets everything, for a connection that is gone.
    void clear() { entries_.clear(); }

 private:
    enum class Stage { Sent, SentAgain, SentAndOvertaken, Confirming };
    struct Entry {
        Setting wanted{};
        Stage stage = Stage::Sent;
        std::uint64_t ticket = 0;
    };

    Entry* awaiting(const VolumeObject& object, std::uint64_t ticket);
    void send(const VolumeObject& object, Entry& entry, Stage stage = Stage::Sent);

    Send send_;
    Confirm confirm_;
    std::map<VolumeObject, Entry> entries_;
    std::uint64_t lastTicket_ = 0;
};

}  // namespace pulse
