#include "shells/desktop/InstanceLock.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

namespace {

/// Programs that the bus starts are told its address with its identifier, others without.
std::string withoutIdentifiers(std::string address) {
    for (std::size_t begin = 0; (begin = address.find(",guid=", begin)) != std::string::npos;) {
        const std::size_t end = address.find_first_of(",;", begin + 1);
        address.erase(begin, end == std::string::npos ? end : end - begin);
    }
    return address;
}

}  // namespace

InstanceLock::~InstanceLock() {
    if (file_ >= 0) close(file_);
}

InstanceLock::State InstanceLock::take(const std::string& busAddress) {
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    if (folder == nullptr || *folder == '\0') return State::Unknown;
    constexpr mode_t ownerOnly = 0600;
    const std::size_t session = std::hash<std::string>()(withoutIdentifiers(busAddress));
    const std::string path = std::string(folder) + "/tarnwick-" + std::to_string(session) + ".lock";
    file_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, ownerOnly);
    if (file_ < 0) return State::Unknown;
    return flock(file_, LOCK_EX | LOCK_NB) == 0 ? State::Ours : State::Taken;
}
