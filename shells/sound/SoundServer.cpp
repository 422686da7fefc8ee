#include "shells/sound/SoundServer.hpp"

#include <dlfcn.h>

// Lazily: the libraries under the module bring thousands of functions, few of which are ever
// called, and to find them all takes as long as everything else of the loading.
LoadedSoundServer loadSoundServer(const std::string& module) {
    void* const loaded = dlopen(module.c_str(), RTLD_LAZY | RTLD_LOCAL);
    void* const entry = loaded ? dlsym(loaded, soundServerEntryName) : nullptr;
    if (!entry) return {nullptr, dlerror()};
    return {reinterpret_cast<SoundServerEntry>(entry), ""};
}

OpenedSoundServer openSoundServer(const LoadedSoundServer& module, const NSString& address) {
    if (!module.entry) return {nullptr, module.error};
    return {std::unique_ptr<SoundServer>(module.entry(address ? address->c_str() : nullptr)), ""};
}
