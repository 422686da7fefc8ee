#include "platform/foundation/FileContents.hpp"

#include "platform/foundation/FileDescriptor.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <utility>

namespace {

/// Files of at most that size that are regular ones; else why not.
std::error_code faultOf(const FileDescriptor& file, std::size_t maximumBytes) {
    struct stat status {};
    if (!file.isOpen() || fstat(file.get(), &status) != 0) return {errno, std::generic_category()};
    if (S_ISDIR(status.st_mode)) return std::make_error_code(std::errc::is_a_directory);
    if (!S_ISREG(status.st_mode)) return std::make_error_code(std::errc::not_supported);
    const bool isLarger = std::cmp_greater(status.st_size, maximumBytes);
    return isLarger ? std::make_error_code(std::errc::file_too_large) : std::error_code();
}

std::error_code readInto(std::string& contents, const FileDescriptor& file,
                         std::size_t maximumBytes) {
    std::array<char, 16384> block{};
    for (;;) {
        const ssize_t count = read(file.get(), block.data(), block.size());
        if (count == 0) return {};
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return {errno, std::generic_category()};
        contents.append(block.data(), static_cast<std::size_t>(count));
        // Counted here too: the file may grow while it is read.
        if (contents.size() > maximumBytes) return std::make_error_code(std::errc::file_too_large);
    }
}

}  // namespace

std::optional<std::string> contentsOfFile(const std::string& path, std::size_t maximumBytes,
                                          std::error_code* error) {
    if (path.find('\0') != std::string::npos) {
        if (error) *error = std::make_error_code(std::errc::no_such_file_or_directory);
        return std::nullopt;
    }
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    std::string contents;
    std::error_code fault = faultOf(file, maximumBytes);
    if (!fault) fault = readInto(contents, file, maximumBytes);
    if (error) *error = fault;
    return fault ? std::nullopt : std::optional(std::move(contents));
}
