#pragma once

#include "platform/celestial/SoundInventory.hpp"
#include "platform/celestial/SoundServer.hpp"
#include "platform/foundation/Result.hpp"

#include <memory>
#include <string>

namespace shell {

// The backend for the sound server is in a module of its own. Its libraries are a third of a small
// program's start, and can be loaded in parallel with the rest. Loading and opening are two steps,
// so that the first can run in a thread:
//
//     const auto module = loadSoundModule(path);                  // Any thread.
//     const auto server = openSoundServer(module, std::nullopt);  // The main thread.
//     if (!server) complain(server.error());
//
// A program that sets no volumes has the inventory instead of the server: loadInventoryModule() and
// openSoundInventory(), in the same steps.

/// The functions that the module exports under these names. Each stores an object that is
/// connecting in its second parameter. `address` is one that libpulse accepts, or nullptr for the
/// one in the environment or in the user's configuration. The module stays loaded until the process
/// ends.
using SoundServerEntry = void (*)(const char* address, std::shared_ptr<SoundServer>& server);
inline constexpr const char* soundServerEntryName = "tarnwick_sound_server_open";
using SoundInventoryEntry = void (*)(const char* address,
                                     std::shared_ptr<SoundInventory>& inventory);
inline constexpr const char* soundInventoryEntryName = "tarnwick_sound_inventory_open";
inline constexpr const char* soundServerModule = "tarnwick-pulse.so";

/// Load the module from its file, in some milliseconds. Any thread.
Result<SoundServerEntry> loadSoundModule(const std::string& module);
Result<SoundInventoryEntry> loadInventoryModule(const std::string& module);

/// A server that is connecting, never nullptr; or why there is none, which may be that the module
/// could not be loaded. Main thread.
Result<std::shared_ptr<SoundServer>> openSoundServer(const Result<SoundServerEntry>& module,
                                                     const NSString& address);
/// The same for an inventory.
Result<std::shared_ptr<SoundInventory>> openSoundInventory(
    const Result<SoundInventoryEntry>& module, const NSString& address);

}  // namespace shell
