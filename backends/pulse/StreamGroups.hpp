#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <vector>

namespace pulse {

/// The streams that an object consists of, in the order of the server; none for a device. The
/// server's own plumbing and streams whose volume nobody may move belong to nothing. They live as
/// long as the mirror stays as it is.
std::vector<const Stream*> streamsOf(const ServerMirror& mirror, const VolumeObject& object);

/// Everything that has to be written to move the object: what is there now, or of an application
/// that plays nothing what the server keeps for its next stream.
std::vector<Target> targetsOf(const ServerMirror& mirror, const VolumeObject& object);

/// What the object is at: of many streams the loudest one that is heard, and muted where all are.
/// nullopt when it isn't there.
std::optional<Level> levelOf(const ServerMirror& mirror, const VolumeObject& object);

/// What the server keeps for the next stream of the role or the application; nullopt where it keeps
/// nothing.
std::optional<Level> levelOfEntry(const ServerMirror& mirror, const VolumeObject& object);

}  // namespace pulse
