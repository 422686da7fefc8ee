#include "platform/foundation/FileContents.hpp"

#include "platform/foundation/FileDescriptor.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>

namespace {

bool isRegularFile(const FileDescriptor& file) {
    struct stat status {};
    return fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

std::optional<std::string> contentsOfFile(const std::string& path, std::size_t maximumBytes) {
    if (path.find('\0') != std::string::npos) return std::nullopt;
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen() || !isRegularFile(file)) return std::nullopt;

    std::string contents;
    std::array<char, 16384> block{};
    for (;;) {
        const ssize_t count = read(file.get(), block.data(), block.size());
        if (count == 0) return contents;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        contents.append(block.data(), static_cast<std::size_t>(count));
        // Counted here rather than taken from the file's size: it may grow while it is read.
        if (contents.size() > maximumBytes) return std::nullopt;
    }
}
