#pragma once

#include "backends/pulse/mirror/ServerMirror.hpp"
#include "platform/celestial/RoleOutputs.hpp"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace pulse {

/// One of the virtual sinks that keep the roles apart.
struct RoleSink {
    std::string_view role;         ///< The word in its name.
    std::string_view description;  ///< Its name in mixers.
    /// The roles of streams that belong to it, in lower case: PulseAudio's words and PipeWire's,
    /// separated by blanks.
    std::string_view streamRoles;
    /// The role whose restore entry its volume replaces; empty for media, which have none.
    std::string_view entryRole;
    int priority;  ///< Session managers with a policy for roles compare it.

    std::string name() const;
    /// The roles as session managers compare them: also with a capital letter, as PipeWire writes
    /// them.
    std::vector<std::string> intendedRoles() const;
};

/// The quiet ones first: media come last when the outputs are loaded, and first when a stream that
/// says no role needs an output.
inline constexpr std::array<RoleSink, 4> roleSinks = {
    {{"notification", "Ringtone", "event notification ringtone ringing", "event", 20},
     {"alarm", "Alarm", "alarm alert", "alarm", 40},
     {"call", "Calls", "phone call communication", "phone", 50},
     {"multimedia", "Media", "multimedia music video movie game animation production", "", 10}}};
inline constexpr const RoleSink& mediaSink = roleSinks.back();

/// Session managers never link sinks of one group to each other, and so send them all to the real
/// one.
inline constexpr const char* roleSinkLinkGroup = "tarnwick-roles";

/// The module that makes one, and its arguments. `real` is the sink behind it: PulseAudio must be
/// told, while PipeWire's session manager finds it.
inline constexpr const char* roleSinkModule = "module-remap-sink";
std::string moduleArguments(const RoleSink& sink, const ServerMirror& mirror,
                            const std::string& real);

/// The sink's device if it is there and ours; nullptr otherwise.
const Device* deviceOf(const RoleSink& sink, const ServerMirror& mirror);
/// Whether the session has sinks for roles that are not ours.
bool hasForeignRoleSinks(const ServerMirror& mirror);
/// The role sink that a stream belongs to, by its role: media without one.
const RoleSink& roleSinkOf(const SinkInput& stream);
/// The streams that play past the output of their role.
struct StrayStream {
    const SinkInput* stream;
    const RoleSink* belongsTo;
};
std::vector<StrayStream> strayStreams(const ServerMirror& mirror);

}  // namespace pulse
