#include "platform/foundation/FileLock.hpp"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <utility>

FileLock::State FileLock::take(const std::filesystem::path& file) {
    if (file_) return State::Ours;
    constexpr mode_t ownerOnly = 0600;
    return takeOpened(
        FileDescriptor(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, ownerOnly)));
}

FileLock::State FileLock::takeFolder(const std::filesystem::path& folder) {
    if (file_) return State::Ours;
    return takeOpened(FileDescriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)));
}

FileLock::State FileLock::takeOpened(FileDescriptor opened) {
    if (!opened.isOpen()) return State::Unknown;
    if (flock(opened.get(), LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? State::Taken : State::Unknown;
    file_.emplace(std::move(opened));
    return State::Ours;
}
