#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pulse {

/// The names, or else the ids, of the applications in a file in which WirePlumber keeps the volumes
/// of streams, each once: "restore-stream" of 0.4, with a line for each property of a stream, or
/// "stream-properties" of 0.5, with a line for each stream. Lines of other kinds, and those that
/// are cut short, are passed over.
std::vector<std::string> applicationsIn(std::string_view streamState);

/// The same of this session's file, the newer series' first; none where it cannot be read. PipeWire
/// itself remembers no stream that has ended. Reads a file of 1 MiB at most.
std::vector<std::string> applicationsThatHavePlayed();

}  // namespace pulse
