#pragma once

#include <filesystem>

namespace rigs {

/// Whether somebody takes connections at the socket. That its file is there does not say so: a
/// server makes it an instant before, and one that has died may have left it.
bool takesConnections(const std::filesystem::path& socketFile);

}  // namespace rigs
