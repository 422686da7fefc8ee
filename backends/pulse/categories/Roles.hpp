#pragma once

#include "backends/pulse/mirror/ServerMirror.hpp"

#include <initializer_list>
#include <string>
#include <string_view>

namespace pulse {

/// Whether two names are equal except for case, which servers and applications do not keep
/// consistently.
bool isSameName(std::string_view one, std::string_view other);

/// The name in lower case, for sorting; letters beyond ASCII stay as they are.
std::string lowered(std::string_view name);

/// Whether two words name the same role. Each may be from PulseAudio's vocabulary, PipeWire's, or
/// that of the session managers' outputs: "video" is "Movie", "event" is "notification".
bool isSameRole(std::string_view one, std::string_view other);

/// PulseAudio's word for a role, by which both servers label streams; the word itself if it is not
/// known.
std::string_view streamRole(std::string_view role);

/// Whether the stream is internal to the server, such as the loopback between a virtual device and
/// a real one, so that the user does not hear it as a separate sound.
bool isPlumbing(const SinkInput& stream);

/// The role in the name of a role's virtual sink; empty for any other device.
std::string_view roleInName(const Device& sink);
/// Whether the device is the virtual sink of a role, to which a session's policy routes the
/// streams. Real devices may declare intended roles too, but are not role sinks.
bool isRoleSink(const Device& sink);

/// Whether the device plays on another one.
bool isVirtual(const Device& sink);
/// The stream through which a virtual device plays; nullptr if there is none. Several devices may
/// share a link group, so the group is the last resort.
const SinkInput* playbackOf(const ServerMirror& mirror, const Device& sink);

/// The first existing sink of these roles; nullptr if there is none.
const Device* roleSinkFor(const ServerMirror& mirror,
                          std::initializer_list<std::string_view> roles);

/// The real device that a virtual one plays on, through any number of others; the device itself if
/// it is real. nullptr for nullptr and if no real device is found.
const Device* realSinkBehind(const ServerMirror& mirror, const Device* sink);

}  // namespace pulse
