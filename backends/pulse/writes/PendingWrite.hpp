#pragma once

#include "backends/pulse/categories/VolumeObject.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <pulse/def.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace pulse {

/// The write of one target. A member that is nullopt leaves its value unchanged.
struct TargetWrite {
    Target target;
    std::optional<pa_cvolume> volume{};
    std::optional<Mute> mute{};
    // For a restore entry, which is replaced as a whole:
    std::string rememberedDevice{};
    /// What playing streams of the role take over at once, including streams that the server has
    /// not described to us yet.
    enum class ToStreams { Nothing, MuteAlone, Everything };
    ToStreams toStreams = ToStreams::Nothing;
};

/// Everything that is pending for one volume object: the value sent and the newest value waiting
/// behind it, the answers that are expected, and what the mirror has to show before the next value
/// is sent. It contains the rules; a VolumeWriter sends, reads and waits accordingly.
///
/// A write lives from its first value until the mirror has confirmed the last one, so an echo of an
/// earlier value is never taken for the current one. The writer holds it by a shared_ptr and every
/// callback by a weak_ptr, so a late answer to a write that has ended or was replaced has no
/// effect.
///
/// PipeWire acknowledges a volume or a mute before its own state contains it, and silently drops
/// the next one if that equals its old state. It may acknowledge one that comes while a headset
/// starts to play without moving anything. A role's entry is stored by the session manager later,
/// and lost if the writer disconnects before. Therefore an echo is awaited after each
/// acknowledgement there.
class PendingWrite {
 public:
    /// The longest wait for an echo, in seconds: a device may round a written volume to the one
    /// that it has.
    static constexpr double longestSeconds = 0.05;
    /// The longest wait for an entry to be stored, in seconds. Some session managers store nothing
    /// for a role, and one on a busy machine is slow.
    static constexpr double longestKeepingSeconds = 0.5;
    /// Seconds between two checks of the mirror.
    static constexpr double retrySeconds = 0.001;

    /// Whether a value that is already pending is sent once more.
    enum class Repeat { Skip, Send };
    /// Taken: every device and stream has moved, so that the next volume may follow. Kept: the
    /// role's entry contains what was written.
    enum class Until { Taken, Kept };
    /// Unheeded: some target is still where it was before the write, and not because that was
    /// written.
    enum class Echo { Arrived, Unheeded, Awaited };

    PendingWrite(VolumeObject object, const Setting& setting)
        : object_(std::move(object)), waiting_(setting) {}

    const VolumeObject& object() const { return object_; }
    /// The object's values once everything pending has arrived.
    const Setting& wanted() const { return waiting_ ? *waiting_ : sent_; }

    // Newer values

    /// Keeps the newest value waiting behind the one that was sent; members that it does not
    /// contain keep their requested values. A value that is already pending is not kept waiting,
    /// unless it is to be repeated.
    void take(const Setting& setting, Repeat repeat);
    /// Whether only the mirror's confirmation of the last value is missing. A newer value is then
    /// sent at once, in a write that replaces this one.
    bool isConfirming() const { return isConfirming_; }
    std::shared_ptr<PendingWrite> succeededBy(const Setting& setting) const;

    // Sending

    /// Takes the waiting value as the one to send now.
    const Setting& begin();
    /// Notes the target writes that are about to be sent, before the mirror changes.
    void expect(const std::vector<TargetWrite>& writes, const ServerMirror& mirror);
    /// False while a mute is pending, when the mirror does not show the actual one.
    bool isMuteCertain() const { return isMuteCertain_; }

    // The server's answers

    /// One more answer is expected. The first is for the sending itself, so that no earlier answer
    /// counts as the last.
    void expectAnswer() { ++answersLeft_; }
    /// Returns whether that was the last one.
    bool takeAnswer(int error);
    /// PA_OK, or the code of the first refusal among the answers.
    int error() const { return error_; }

    // The echo in the mirror

    /// Starts waiting for the mirror to show that.
    void await(Until until, double nowSeconds);
    Until awaited() const { return until_; }
    /// The state of the echo in the mirror, after a read that started at `readSeconds`.
    Echo echoIn(const ServerMirror& mirror, double readSeconds) const;
    /// Whether the mirror shows every value exactly as it was written.
    bool isExactIn(const ServerMirror& mirror) const;
    /// The timer until the next check of the mirror.
    OneShotTimer& pause() { return pause_; }

    // The next step

    /// The write had no effect. Returns whether to send the same value again: only once, and not if
    /// a newer one is waiting.
    bool mayRepeatUnheeded();
    /// Whether a newer value is to be sent. If not, the write waits for its confirmation.
    bool hasNext();

 private:
    struct Change {
        Target target;
        pa_cvolume before{};
        std::optional<pa_cvolume> written{};
        std::optional<Mute> mute{};
    };
    static bool hasVolume(const Change& change, const pa_cvolume& shown);
    static bool hasMute(const Change& change, Mute shown);
    static bool isExact(const Change& change, const ServerMirror& mirror);
    bool hasArrived(const Change& change, const ServerMirror& mirror) const;

    VolumeObject object_;
    Setting sent_{};
    std::optional<Setting> waiting_;
    int timesUnheeded_ = 0;
    bool isMuteCertain_ = true;
    bool isConfirming_ = false;
    std::size_t answersLeft_ = 0;
    int error_ = PA_OK;
    std::vector<Change> changes_;
    Until until_ = Until::Taken;
    double awaitedSinceSeconds_ = 0;  // On the run loop's clock.
    OneShotTimer pause_;
};

}  // namespace pulse
