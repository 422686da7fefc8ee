#pragma once

#include "platform/foundation/NSString.hpp"

#include <filesystem>
#include <optional>

namespace pulse {

/// The file of the local socket that an address of the client library leads to, the first one of
/// several; nullopt where there is none. `server` nil: where the environment says, else the
/// session's own.
std::optional<std::filesystem::path> serverSocket(const NSString& server);

}  // namespace pulse
