#pragma once

#include "backends/pulse/categories/VolumeObject.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"

#include <vector>

namespace pulse {

/// Whether the stream can belong to an object: it is not internal to the server, and its volume can
/// be changed.
bool isUsersStream(const SinkInput& stream);

/// The streams that an object consists of, in the server's order; none for a device. Valid until
/// the mirror changes.
std::vector<const SinkInput*> streamsOf(const ServerMirror& mirror, const VolumeObject& object);

/// The targets to write in order to set the object: its devices or streams and, for an application
/// that plays nothing, the server's entry for its next stream.
std::vector<Target> targetsOf(const ServerMirror& mirror, const VolumeObject& object);

/// The object's level: of several streams the loudest one that is heard, and muted if all are.
/// nullopt if the object does not exist.
std::optional<Level> levelOf(const ServerMirror& mirror, const VolumeObject& object);

/// The level that the server stores for the next stream of the role or the application; nullopt if
/// it stores none.
std::optional<Level> levelOfEntry(const ServerMirror& mirror, const VolumeObject& object);

}  // namespace pulse
