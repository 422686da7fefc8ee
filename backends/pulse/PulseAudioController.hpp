#pragma once

#include "platform/celestial/AVSystemController.hpp"

#include <functional>
#include <memory>

/// The volumes of a PulseAudio server, or of another that speaks its protocol. "Audio/Video" is
/// the default output device, "Ringtone" what the server remembers for event sounds; the other
/// categories have no volume that could be read yet.
///
/// It connects by itself and again whenever the connection ends. While there is none, no volume
/// can be read and a volume set is dropped: the server that comes back may be a different one.
/// Changes are announced as the differences of what the categories show, about 10 ms after the
/// first of them; that is also done for a category that became readable and for one whose route
/// changed.
///
/// Works on GLib's default main context and on the main run loop, both driven by the shell on the
/// main thread. Never waits. Handlers and notifications come from the main run loop, never from
/// inside a call of this class, and never after its end; each may destroy the controller.
class PulseAudioController : public AVSystemController {
 public:
    enum class State {
        Connecting,   ///< The first attempt is under way.
        Ready,        ///< The server answers, and what it said is here.
        Unavailable,  ///< No server answers; attempts go on.
    };

    /// Begins to connect. `server` is an address as libpulse takes it ("unix:/path"); nil is
    /// where the environment and the user's configuration say.
    explicit PulseAudioController(NSString server = std::nullopt);
    ~PulseAudioController() override;

    std::string_view className() const override { return "PulseAudioController"; }

    /// A muted output has volume 0, one amplified above 100 % has volume 1.
    bool getVolume(float& volume, const NSString& category) override;
    /// Unmutes. False, and nothing is sent, when the category can't be read now.
    bool setVolumeTo(float volume, const NSString& category) override;
    /// A known category has a route always: without a server the last one, "Speaker" at first.
    NSString routeForCategory(const NSString& category) override;

    /// Whether a volume that was set has not been confirmed by the server yet. False also where
    /// the connection ended meanwhile, which state() tells. For a program that ends right after.
    bool isWriting() const;

    State state() const;
    /// Called with each new state, before the notifications that come of it.
    void setStateHandler(std::function<void(State)> handler);
    /// Called when rows have to be read again and no notification says so: a category can't be
    /// read any more, or the route of one that can't be read changed.
    void setAvailabilityHandler(std::function<void()> handler);

 private:
    class Service;
    std::unique_ptr<Service> service_;
};
