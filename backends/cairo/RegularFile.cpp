#include "backends/cairo/RegularFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

std::optional<RegularFile> RegularFile::open(const std::string& path) {
    // Looked at before it is opened, since opening alone can do something to a device; and again
    // afterwards, since it may have been exchanged in between.
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) return std::nullopt;
    const int answer = ::fstat(descriptor, &status);
    RegularFile file(descriptor, {status.st_dev, status.st_ino, status.st_size,
                                  status.st_mtim.tv_sec, status.st_mtim.tv_nsec});
    if (answer != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return file;
}

RegularFile::RegularFile(int descriptor, const FileIdentity& identity)
    : descriptor_(descriptor), identity_(identity) {}

RegularFile::RegularFile(RegularFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), identity_(other.identity_) {}

RegularFile::~RegularFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

bool RegularFile::read(std::span<unsigned char> buffer) noexcept {
    while (!buffer.empty()) {
        const ssize_t count = ::read(descriptor_, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        buffer = buffer.subspan(std::size_t(count));
    }
    return true;
}

bool RegularFile::rewind() noexcept {
    return ::lseek(descriptor_, 0, SEEK_SET) == 0;
}
