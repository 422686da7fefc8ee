#pragma once

#include "backends/pulse/Announcer.hpp"
#include "backends/pulse/CategoryMapping.hpp"
#include "backends/pulse/Connection.hpp"
#include "backends/pulse/DeviceMemory.hpp"
#include "backends/pulse/MirrorReader.hpp"
#include "backends/pulse/PulseAudioController.hpp"
#include "backends/pulse/RolePoller.hpp"
#include "backends/pulse/ServerMirror.hpp"
#include "backends/pulse/StreamMemory.hpp"
#include "backends/pulse/VolumeWriter.hpp"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace pulse {

/// What the controller answers from: connection, mirror, writer and announcer brought together.
class VolumeService {
 public:
    using State = PulseAudioController::State;

    explicit VolumeService(NSString server);

    /// What the category shows now; from then on its changes are announced.
    CategoryState look(const NSString& category);
    /// False, and nothing is sent, when the category can't be read now.
    bool set(const NSString& category, const Setting& setting);

    bool lasts(const NSString& category) const;
    bool isWriting() const { return !writer_.isIdle() || tellingRefusals_.isRunning(); }
    void setAttention(PulseAudioController::Attention attention) {
        poller_.setAttention(attention);
        if (!isReady()) poller_.stop();
    }

    State state() const { return state_; }
    const NSString& refusal() const { return connection_.refusal(); }
    void setStateHandler(std::function<void(State)> handler) { stateHandler_ = std::move(handler); }
    void setRefusalHandler(PulseAudioController::RefusalHandler handler) {
        refusalHandler_ = std::move(handler);
    }
    Announcer& announcer() { return announcer_; }

 private:
    bool isReady() { return connection_.context() && reader_ && reader_->isComplete(); }
    /// Of what is there now, or will be moved when it comes.
    std::optional<Level> levelKnownOf(const VolumeObject& object) const;
    void confirmed();
    /// Moves what has just come to what the user gave it.
    void setNewcomersRight();
    /// The object is what the category's volume belongs to now.
    CategoryState shownBy(const NSString& category, const std::optional<VolumeObject>& object);
    void becameReady(PulseContext& context);
    void lost();
    void mirrorChanged(Part part);
    void tellWhatMoved();
    void setState(State state);
    void tellState();
    void refused(const VolumeObject& object, const std::string& reason);
    void tellRefusal();

    State state_ = State::Connecting;
    State toldState_ = State::Connecting;
    std::function<void(State)> stateHandler_;
    OneShotTimer tellingState_;
    PulseAudioController::RefusalHandler refusalHandler_;
    std::deque<std::pair<std::string, std::string>> refusals_;  // Untold ones.
    OneShotTimer tellingRefusals_;

    ServerMirror mirror_;
    VolumeWriter writer_;
    StreamMemory memory_;
    DeviceMemory devices_;
    RolePoller poller_;
    std::optional<MirrorReader> reader_;
    // The last two: the connection's end withdraws every answer to the others.
    Connection connection_;
    Announcer announcer_;
};

}  // namespace pulse
