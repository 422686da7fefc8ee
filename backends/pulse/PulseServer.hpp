#pragma once

#include "platform/celestial/SoundInventory.hpp"
#include "platform/celestial/SoundServer.hpp"

#include <memory>

namespace pulse {

/// The volumes of a PulseAudio server, or of PipeWire through its PulseAudio interface. Returns at
/// once in State::Connecting and starts to connect:
///
///     const auto server = pulse::connectToServer();
///     server->setStateHandler([&](SoundServer::State state) { ... });
///     AVSystemController::setSharedAVSystemController(server);
///
/// `address` is one that libpulse accepts ("unix:/path"); nil is the address in the environment or
/// the user's configuration.
///
/// Six categories belong to the device. If the session has a separate output for a role, the role's
/// category sets that output. Otherwise: "Ringtone" and "PhoneCall" are the streams of role "event"
/// or "phone" and the server's entry for the next one, at 100 % until it is first set;
/// "Audio/Video" is the default output; "HeadphonesBT" and "HeadsetBT" are a Bluetooth output in a
/// profile for music or for calls; "VideoConference" is the streams of every process that also
/// records, except calls.
///
/// Other categories have a scheme: "role:NAME" as the roles above; "sink:NAME" and "source:NAME"
/// for an output or input by the server's name, including "sink:@DEFAULT_SINK@", "sink:@REAL@" (the
/// real one behind outputs for roles) and "source:@DEFAULT_SOURCE@"; "app:NAME" for every stream of
/// an application, by its name, its id or its program's file name, regardless of case. A category
/// that does not exist cannot be read. Of several streams the loudest one heard is shown, and all
/// are set to the same volume; they count as muted if all are. A volume above 100 % counts as 1.
///
/// The user's volume and mute of an application or of conferences are remembered for as long as the
/// object lives: they are shown while nothing plays and given to every new stream, and what another
/// program sets on one of the streams takes their place. What the user never set is never touched.
///
/// roleOutputs() gives each role an output of its own, on a server of this machine.
///
/// It reconnects whenever the connection ends. Without a connection no volume can be read, and a
/// set is dropped, since the returning server may be a different one. A route keeps its last value,
/// "Speaker" at first; it is nil for a named output or input that does not exist and for unknown
/// categories. lasts() is false for a role that plays nothing, if the server stores the volume
/// without applying it to the role's next stream and no other mixer runs that would.
///
/// Changes are announced as differences between what the categories show, about 10 ms after the
/// first change, also for a category that became readable and for one whose route changed. A
/// category with a scheme is announced from the first time that its volume or route was requested.
///
/// Works on GLib's default main context and on the main run loop, both run by the shell on the main
/// thread. Never waits. Handlers and notifications come from the main run loop and never after the
/// object's destruction; each may drop the last reference to it.
std::shared_ptr<SoundServer> connectToServer(const NSString& address = std::nullopt);

/// What that server has for rows, read over a connection of its own and followed by its events. The
/// address, the loops and the reconnection are as above. Nothing is polled: restore entries, which
/// PipeWire before 1.2 does not announce, are read when streams change.
std::shared_ptr<SoundInventory> openInventory(const NSString& address = std::nullopt);

}  // namespace pulse
