#pragma once

#include "backends/pulse/mirror/ServerMirror.hpp"
#include "platform/foundation/NSString.hpp"

#include <filesystem>
#include <string>

namespace pulse {

// A file of PipeWire's configuration by which PipeWire itself makes the outputs for roles, from the
// next log-in on and without any mixer. Functions that return a text return nil on success, else
// the problem in words for users.

/// In $XDG_CONFIG_HOME/pipewire/pipewire.conf.d, or in ~/.config.
std::filesystem::path dropInPath();
/// Its contents, in the spelling that the session manager reads.
std::string dropInText(const ServerMirror& mirror);
/// Whether the file is there and was written by this project. A link is not ours.
bool hasDropIn();
/// Writes the file, and its folders. A file of that name that is not ours is left alone.
NSString installDropIn(const ServerMirror& mirror);
/// Removes the file if it is there and ours.
NSString removeDropIn();

}  // namespace pulse
