#pragma once

#include "backends/pulse/categories/Announcer.hpp"
#include "backends/pulse/categories/CategoryMapping.hpp"
#include "backends/pulse/connection/Connection.hpp"
#include "backends/pulse/mirror/MirrorReader.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"
#include "backends/pulse/outputs/OutputsKeeper.hpp"
#include "backends/pulse/writes/ConnectedServer.hpp"
#include "backends/pulse/writes/DeviceMemory.hpp"
#include "backends/pulse/writes/StreamMemory.hpp"
#include "backends/pulse/writes/VolumeWriter.hpp"
#include "platform/celestial/SoundServer.hpp"

#include <deque>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace pulse {

/// Implements connectToServer(), which documents the behaviour, out of connection, mirror, writer
/// and announcer.
///
/// The connection delivers each context that is ready; the reader copies the server's state into
/// the mirror whenever the server announces a change; the mapping finds the object of a category in
/// the mirror; the writer sets that object; and the announcer announces the differences. The
/// memories provide values for streams and devices that appear later.
class PulseAudioController final : public SoundServer {
 public:
    explicit PulseAudioController(NSString address);

    std::string_view className() const override { return "PulseAudioController"; }

    bool change(const Change& change, const NSString& category) override;
    std::optional<Level> levelOf(const NSString& category) override;
    NSString routeForCategory(const NSString& category) override { return look(category).route; }

    State state() const override { return state_; }
    NSString whyUnavailable() const override { return connection_.refusal(); }
    bool isWriting() const override { return !writer_.isIdle() || tellingRefusals_.isRunning(); }
    bool lasts(const NSString& category) const override;
    void setAttention(Attention attention) override;
    RoleOutputs* roleOutputs() override { return &outputs_; }

 private:
    bool isReady() { return connection_.context() && reader_ && reader_->isComplete(); }
    /// The category's current state. From then on its changes are announced.
    CategoryState look(const NSString& category);
    /// The level of the existing streams, or the one that future streams will get.
    std::optional<Level> levelKnownOf(const VolumeObject& object) const;
    /// `object` is what the category stands for at the moment.
    CategoryState shownBy(const NSString& category, const std::optional<VolumeObject>& object);

    void becameReady(PulseContext& context);
    void lost();
    void mirrorChanged(Part part);
    void confirmed();
    void refused(const VolumeObject& object, const std::string& reason);
    /// Sets new streams and devices to the user's values.
    void setNewcomersRight();

    void setState(State state);
    void tellNewState();
    void tellWhatMoved();
    void tellNextRefusal();

    State state_ = State::Connecting;
    State toldState_ = State::Connecting;
    OneShotTimer tellingState_;
    std::deque<std::pair<std::string, std::string>> refusals_;     // Not reported yet.
    std::set<std::pair<std::string, std::string>> knownRefusals_;  // During this connection.
    OneShotTimer tellingRefusals_;

    ServerMirror mirror_;
    VolumeWriter writer_;
    StreamMemory memory_;
    DeviceMemory devices_;
    RolePoller poller_;
    std::optional<MirrorReader> reader_;
    std::optional<ConnectedServer> server_;
    OutputsKeeper outputs_{mirror_};
    // Declared last, destroyed first: no answer to the other members comes after that.
    Connection connection_;
    Announcer announcer_;
};

}  // namespace pulse
