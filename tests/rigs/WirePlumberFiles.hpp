#pragma once

#include "tests/rigs/ServerFolder.hpp"

#include <string>

namespace rigs {

enum class Bluetooth { Off, On };

/// Whether this machine's WirePlumber is of the series that is configured by Lua scripts, before
/// 0.5.
bool isWirePlumberScripted();

/// Configures WirePlumber in that folder for a session without a machine: no hardware, no session
/// bus and no seat. It writes `readyText` to its log once it remembers what is set for roles. With
/// Bluetooth it watches the system bus for headsets, and gives no device a volume.
void writeWirePlumberFiles(const ServerFolder& folder, Bluetooth bluetooth,
                           const std::string& readyText);

/// Where it keeps what was set for streams and roles, from the folder on.
std::string wirePlumberStreamStateFile();

}  // namespace rigs
