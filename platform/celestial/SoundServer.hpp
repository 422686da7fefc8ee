#pragma once

#include "platform/celestial/AVSystemController.hpp"

#include <functional>
#include <optional>
#include <string>

class RoleOutputs;

/// The volumes of a sound server, and its state: whether it answers, whether what was set has
/// arrived, and what it refused. Every volume service of the shells is one, including the simulated
/// device.
///
/// Create one, set its handlers, and install it as the process's AVSystemController, which is all
/// that the widget sees:
///
///     auto server = std::make_shared<SimulatedAudioDevice>();
///     server->setStateHandler([](SoundServer::State state) { ... });
///     AVSystemController::setSharedAVSystemController(server);
///
/// An implementation provides levelOf(), routeForCategory() and change(), and calls the tell
/// functions from the main loop, never from inside a call of this class. Each handler may replace
/// itself and may drop the last reference to the server. Main thread.
class SoundServer : public AVSystemController {
 public:
    enum class State {
        Connecting,   ///< The first attempt is under way.
        Ready,        ///< The server answers, and its state has been read.
        Unavailable,  ///< No server answers; attempts continue.
    };
    /// Whether the volumes are shown, or only their notifications are observed.
    enum class Attention { Resting, Watched };
    /// A change of a category; members that are nullopt stay as they are.
    struct Change {
        std::optional<float> volume{};  ///< As it was given; kept within 0 to 1.
        std::optional<Mute> mute{};
    };

    // The volume service ----------------------------------------------------------------------

    bool getVolume(float& volume, const NSString& category) final;
    bool setVolumeTo(float volume, const NSString& category) final;
    bool setMute(Mute mute, const NSString& category) final;
    /// Sends a change without calling the volume observer, for shells that set a volume on behalf
    /// of something else. Returns false, and sends nothing, if there is no such category to change.
    virtual bool change(const Change& change, const NSString& category) = 0;

    // The server ------------------------------------------------------------------------------

    virtual State state() const = 0;
    /// Why no server answers, in words for users; nil while one does, during an attempt, and while
    /// a server that accepted the connection has not answered yet.
    virtual NSString whyUnavailable() const { return std::nullopt; }
    /// Whether something that was set has been neither confirmed nor refused. Also false after the
    /// connection ended, which state() tells. For programs that end right afterwards.
    virtual bool isWriting() const { return false; }
    /// Whether a value set for the category still applies to its next sound when this program has
    /// ended.
    virtual bool lasts(const NSString& /*category*/) const { return true; }
    /// Watched by default. While Resting, the server is not polled for what it does not announce,
    /// and nothing wakes up.
    virtual void setAttention(Attention /*attention*/) {}

    /// The server's outputs for roles; nullptr if it cannot have any. Lives as long as the server.
    virtual RoleOutputs* roleOutputs() { return nullptr; }

    // Handlers --------------------------------------------------------------------------------

    /// Called with each new state, before the notifications that come of it.
    void setStateHandler(std::function<void(State)> handler) { stateHandler_ = std::move(handler); }
    /// Called when rows must be read again and no notification can say so: a category became
    /// unreadable, or the route of an unreadable one changed.
    void setAvailabilityHandler(std::function<void()> handler) {
        availabilityHandler_ = std::move(handler);
    }
    /// Called when the server refuses a change, with the category that names the object
    /// ("sink:NAME") and the reason in the server's words. Once for each object and reason per
    /// connection, not for each step of a drag. The rows of the object are announced again with
    /// their actual volumes.
    using RefusalHandler =
        std::function<void(const std::string& category, const std::string& reason)>;
    void setRefusalHandler(RefusalHandler handler) { refusalHandler_ = std::move(handler); }
    /// Called for every setVolumeTo() with the given volume, before it is sent.
    using VolumeObserver = std::function<void(const NSString& category, float volume)>;
    void setVolumeObserver(VolumeObserver observer) { volumeObserver_ = std::move(observer); }

 protected:
    // The handler may destroy the server, so touch no member afterwards.
    void tellState(State state) const;
    void tellAvailability() const;
    void tellRefusal(const std::string& category, const std::string& reason) const;

 private:
    std::function<void(State)> stateHandler_;
    std::function<void()> availabilityHandler_;
    RefusalHandler refusalHandler_;
    VolumeObserver volumeObserver_;
};
