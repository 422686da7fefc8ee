#include "platform/foundation/KeptFile.hpp"

#include "platform/foundation/FileContents.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace {

constexpr int mostKept = 999;
// Larger files are kept again instead of compared: a hard link takes no space.
constexpr std::size_t mostComparedBytes = std::size_t{16} * 1024 * 1024;

/// False where either cannot be read. A symbolic link is no copy: it may lead to the file itself.
bool isCopy(const std::string& kept, const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(kept, error)))
        return false;
    const auto contents = contentsOfFile(kept, mostComparedBytes);
    return contents && contents == contentsOfFile(path, mostComparedBytes);
}

bool renameToFreeName(const std::string& from, const std::string& to) {
    return renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0;
}

}  // namespace

KeptFile::~KeptFile() {
    if (way_ == Way::Linked) unlink(keptPath_.c_str());
    if (way_ == Way::Renamed) renameToFreeName(keptPath_, path_);
}

std::error_code KeptFile::keep() {
    for (int number = 1; number <= mostKept; ++number) {
        keptPath_ = path_ + mark_ + std::to_string(number);
        const std::error_code error = takeName();
        if (error == std::errc::no_such_file_or_directory) return {};
        if (error != std::errc::file_exists) return error;
        if (isCopy(keptPath_, path_)) return {};
    }
    return std::make_error_code(std::errc::file_exists);
}

/// A hard link if possible, so that the file is never missing.
std::error_code KeptFile::takeName() {
    if (link(path_.c_str(), keptPath_.c_str()) == 0) {
        way_ = Way::Linked;
        return {};
    }
    // Files of other users cannot be linked, and some file systems have no links.
    if (errno != ENOENT && errno != EEXIST && renameToFreeName(path_, keptPath_)) {
        way_ = Way::Renamed;
        return {};
    }
    return {errno, std::generic_category()};
}
