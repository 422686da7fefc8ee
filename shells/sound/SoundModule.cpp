#include "shells/sound/SoundModule.hpp"

#include <dlfcn.h>

namespace shell {
namespace {

// Lazy binding: the module's libraries have thousands of functions, few of which are called, and
// resolving all of them takes as long as the rest of loading.
template <class Entry>
Result<Entry> loadEntry(const std::string& module, const char* name) {
    void* const loaded = dlopen(module.c_str(), RTLD_LAZY | RTLD_LOCAL);
    void* const entry = loaded ? dlsym(loaded, name) : nullptr;
    if (!entry) return Failure{std::string(dlerror())};
    return reinterpret_cast<Entry>(entry);
}

template <class Opened>
Result<std::shared_ptr<Opened>> open(
    const Result<void (*)(const char*, std::shared_ptr<Opened>&)>& module, const NSString& address,
    const char* what) {
    if (!module) return Failure{module.error()};
    std::shared_ptr<Opened> opened;
    (*module)(address ? address->c_str() : nullptr, opened);
    if (!opened) return Failure{std::string("the sound server's module provides no ") + what};
    return opened;
}

}  // namespace

Result<SoundServerEntry> loadSoundModule(const std::string& module) {
    return loadEntry<SoundServerEntry>(module, soundServerEntryName);
}

Result<SoundInventoryEntry> loadInventoryModule(const std::string& module) {
    return loadEntry<SoundInventoryEntry>(module, soundInventoryEntryName);
}

Result<std::shared_ptr<SoundServer>> openSoundServer(const Result<SoundServerEntry>& module,
                                                     const NSString& address) {
    return open<SoundServer>(module, address, "server");
}

Result<std::shared_ptr<SoundInventory>> openSoundInventory(
    const Result<SoundInventoryEntry>& module, const NSString& address) {
    return open<SoundInventory>(module, address, "inventory");
}

}  // namespace shell
