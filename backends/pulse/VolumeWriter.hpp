#pragma once

#include "backends/pulse/Arrivals.hpp"
#include "backends/pulse/BalanceMemory.hpp"
#include "backends/pulse/MirrorReader.hpp"
#include "backends/pulse/SinkWaker.hpp"
#include "backends/pulse/WriteQueue.hpp"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace pulse {

/// Moves objects of the server that the mirror is a copy of, while there is a connection.
class VolumeWriter {
 public:
    struct Handlers {
        /// The server has been asked again after an object's last write, and the mirror says what
        /// came of it.
        std::function<void()> confirmed;
        /// The server refused to change the object, and why in its words, where it has any: once
        /// for each reason while the connection lasts.
        std::function<void(const VolumeObject&, const std::string& reason)> refused;
    };

    /// `mirror` outlives the writer.
    VolumeWriter(const ServerMirror& mirror, Handlers handlers);

    /// Both are valid until end().
    void begin(PulseContext& context, MirrorReader& reader);
    /// Drops what is on its way.
    void end();

    /// Brings everything that the object consists of there. Nothing happens without a connection.
    /// With Repeat::Send also where that is on its way already, for streams that have joined the
    /// object since.
    void set(const VolumeObject& object, const Setting& setting,
             WriteQueue::Repeat repeat = WriteQueue::Repeat::Skip);
    /// What the object will be once everything has arrived; nullopt when nothing is on its way.
    std::optional<Setting> pending(const VolumeObject& object) const {
        return writes_.pending(object);
    }
    bool isIdle() const { return writes_.isEmpty(); }

    void streamsChanged() { balances_.forgetStreamsMissingIn(mirror_); }

 private:
    void observeBalances(const VolumeObject& object);
    void send(const VolumeObject& object, const Setting& wanted, std::uint64_t ticket);
    TargetWrite writeTo(const Target& target, const Setting& wanted, bool isMuteCertain);
    void acknowledged(const VolumeObject& object, std::uint64_t ticket, int error);
    void sendAgain(const VolumeObject& object, std::uint64_t ticket);
    bool mayNeverHaveRun(const VolumeObject& object) const;
    void noteAnswer(const VolumeObject& object, int error);
    void tellRefusal(const VolumeObject& object, const std::string& reason);
    void confirm(const VolumeObject& object, std::uint64_t ticket);
    void await(const VolumeObject& object, Arrivals::Until until, const Arrivals::Ended& ended);
    void finish(const VolumeObject& object, std::uint64_t ticket);

    const ServerMirror& mirror_;
    Handlers handlers_;
    PulseContext* context_ = nullptr;
    MirrorReader* reader_ = nullptr;
    BalanceMemory balances_;
    Arrivals arrivals_;
    SinkWaker waker_;
    WriteQueue writes_;
    std::set<VolumeObject> mutesOnTheirWay_;  // What the mirror says of them is no guide.
    std::set<VolumeObject> refused_;          // Whose last answer was no.
    std::set<std::pair<VolumeObject, std::string>> toldRefusals_;
};

}  // namespace pulse
