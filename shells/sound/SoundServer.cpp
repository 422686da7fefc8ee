#include "shells/sound/SoundServer.hpp"

#include <dlfcn.h>

OpenedSoundServer openSoundServer(const std::string& module, const NSString& address) {
    void* const loaded = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const entry = loaded ? dlsym(loaded, soundServerEntryName) : nullptr;
    if (!entry) return {nullptr, dlerror()};
    const auto open = reinterpret_cast<SoundServerEntry>(entry);
    return {std::unique_ptr<SoundServer>(open(address ? address->c_str() : nullptr)), ""};
}
