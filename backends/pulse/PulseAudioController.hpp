#pragma once

#include "platform/celestial/AVSystemController.hpp"

#include <functional>
#include <memory>

namespace pulse {
class VolumeService;
}

/// The volumes of a PulseAudio server, or of PipeWire, which speaks its protocol. Six categories
/// are the device's own. Where the session has an output of its own for a role, that is what a
/// category of the role moves; else:
///  - "Ringtone", "PhoneCall": the streams of role "event" or "phone" and what the server keeps
///    for the next one, at 100 % before anybody has touched it;
///  - "Audio/Video": the default output;
///  - "HeadphonesBT", "HeadsetBT": a Bluetooth output while it is in a profile for music, or in
///    one for calls;
///  - "VideoConference": the streams of every process that also records, phone calls apart.
/// Others are named by a scheme: "role:NAME" as the roles above; "sink:NAME" and "source:NAME" an
/// output or input by the server's name for it, also "sink:@DEFAULT_SINK@" and
/// "source:@DEFAULT_SOURCE@"; "app:NAME" every stream of an application, by its name, its id or
/// its program's file name, in any case of letters. What is not there cannot be read. Of several
/// streams the loudest is shown, and all are moved to the same volume.
///
/// The volume that the user gave to an application or to conferences, and that he muted them, is
/// remembered for as long as the controller lives: it is shown while nothing plays, every stream
/// that comes later gets it, and what somebody else sets on one of the streams takes its place.
/// What the user never moved is never touched.
///
/// It connects by itself and again whenever the connection ends. While there is none, no volume
/// can be read and a volume set is dropped: the server that comes back may be a different one.
/// Changes are announced as the differences of what the categories show, about 10 ms after the
/// first of them; that is also done for a category that became readable and for one whose route
/// changed. A category with a scheme is announced from when somebody has asked for its volume or
/// its route.
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

    /// What is muted has volume 0, what is amplified above 100 % has volume 1.
    bool getVolume(float& volume, const NSString& category) override;
    /// Unmutes. False, and nothing is sent, when the category can't be read now.
    bool setVolumeTo(float volume, const NSString& category) override;
    /// Of several streams the loudest one that is heard; muted where all of them are.
    std::optional<Level> levelOf(const NSString& category) override;
    /// Everything that the category consists of. False, and nothing is sent, when it can't be read
    /// now.
    bool setMute(Mute mute, const NSString& category) override;
    /// The last one while no server answers, "Speaker" at first. nil for a named output or input
    /// that isn't there and for what is no category.
    NSString routeForCategory(const NSString& category) override;

    /// Whether what was set has not been confirmed or refused by the server yet. False also where
    /// the connection ended meanwhile, which state() tells. For a program that ends right after.
    bool isWriting() const;

    /// Whether somebody looks at the volumes, or no more than hears of them: while nobody does, the
    /// server is asked for nothing that it doesn't announce, and nothing wakes up. Watched at
    /// first.
    enum class Attention { Resting, Watched };
    void setAttention(Attention attention);

    /// Whether what is set for the category without this controller reaches what sounds next: not
    /// where it is for a role of which nothing plays, the server keeps it without giving it to the
    /// role's next stream, and no other mixer runs that would.
    bool lasts(const NSString& category) const;

    State state() const;
    /// Why no server answers, in a few words for people; nil while there is one, while an attempt
    /// is under way, and where a server took the connection but has not answered yet.
    NSString refusal() const;
    /// Called with each new state, before the notifications that come of it.
    void setStateHandler(std::function<void(State)> handler);
    /// Called when rows have to be read again and no notification says so: a category can't be
    /// read any more, or the route of one that can't be read changed.
    void setAvailabilityHandler(std::function<void()> handler);
    /// Called when the server refuses what was set: with a category that names the object
    /// ("sink:NAME"), and the reason in the server's words. Once for each object and reason, while
    /// the connection lasts. The object's rows are announced anew as they are.
    using RefusalHandler =
        std::function<void(const std::string& object, const std::string& reason)>;
    void setRefusalHandler(RefusalHandler handler);

 private:
    std::unique_ptr<pulse::VolumeService> service_;
};
