#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <initializer_list>
#include <string_view>

namespace pulse {

/// Whether two names are the same but for case, which servers and applications are free with.
bool isSameName(std::string_view one, std::string_view other);

/// Whether two words mean the same role, each in PulseAudio's vocabulary, in PipeWire's or in that
/// of the session managers' outputs: "video" is "Movie", "event" is "notification".
bool isSameRole(std::string_view one, std::string_view other);

/// PulseAudio's word for a role, which both servers know streams by; the word itself for a role
/// that has none.
std::string_view streamRole(std::string_view role);

/// Whether the stream belongs to the server's own plumbing between a virtual device and the real
/// one, so that it isn't anything that the user hears as a sound of its own.
bool isPlumbing(const Stream& stream);

/// Whether the device is the virtual one of a role, that a session's policy routes its streams to.
/// Real devices may say what they are intended for too, and are not.
bool isRoleSink(const Device& sink);

/// The first of the roles' sinks that is there; nullptr when there is none.
const Device* roleSinkFor(const ServerMirror& mirror,
                          std::initializer_list<std::string_view> roles);

/// The device that a virtual one plays on, through any number of them; the device itself when it
/// is real. nullptr for nullptr and when nothing real can be found behind it.
const Device* realSinkBehind(const ServerMirror& mirror, const Device* sink);

}  // namespace pulse
