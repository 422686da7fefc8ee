#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <initializer_list>
#include <string_view>

namespace pulse {

/// Whether two names are the same but for case, which servers and applications are free with.
bool isSameName(std::string_view one, std::string_view other);

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
