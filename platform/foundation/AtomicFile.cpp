#include "platform/foundation/FileContents.hpp"
#include "platform/foundation/FileDescriptor.hpp"
#include "platform/foundation/KeptFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>

namespace {

constexpr mode_t newFileMode = 0644;     // Less what the process's mask takes away.
constexpr mode_t newFolderMode = 0700;   // As settings folders are made on this system.
constexpr mode_t unfinishedMode = 0600;  // Until the contents have their final mode.

/// The final target of a path.
struct Target {
    std::string path;            ///< No symbolic link.
    std::optional<mode_t> mode;  ///< Of the file that is there already.
    std::error_code error;       ///< Why the path can't be a file's.
};

std::error_code lastError() {
    return {errno, std::generic_category()};
}

Target noTarget(std::errc why) {
    return {"", std::nullopt, std::make_error_code(why)};
}

std::string folderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) return "./";
    return path.substr(0, slash + 1);
}

/// The link's destination; empty when it cannot be read.
std::string destinationOfLink(const std::string& path) {
    std::error_code error;
    const std::filesystem::path destination = std::filesystem::read_symlink(path, error);
    if (error || destination.empty()) return "";
    return destination.is_absolute() ? destination.string() : folderOf(path) + destination.string();
}

/// Paths of folders, pipes and devices, and cyclic links, are errors.
Target targetOf(std::string path) {
    constexpr int maximumLinks = 40;
    for (int links = 0; links <= maximumLinks; ++links) {
        struct stat status {};
        if (lstat(path.c_str(), &status) != 0) {
            const std::error_code error = lastError();
            if (error == std::errc::no_such_file_or_directory) return {path, std::nullopt, {}};
            return {"", std::nullopt, error};
        }
        if (S_ISREG(status.st_mode)) return {path, status.st_mode & 07777, {}};
        if (S_ISDIR(status.st_mode)) return noTarget(std::errc::is_a_directory);
        if (!S_ISLNK(status.st_mode)) return noTarget(std::errc::not_supported);
        path = destinationOfLink(path);
        if (path.empty()) break;
    }
    return noTarget(std::errc::too_many_symbolic_link_levels);
}

/// A new file that is deleted unless it gets its final name.
class TemporaryFile {
 public:
    TemporaryFile(const std::string& folder, mode_t mode)
        : path_(folder + ".tarnwick." + randomName()),
          file_(open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode)) {}
    ~TemporaryFile() {
        if (file_.isOpen() && !isRenamed_) unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool isOpen() const { return file_.isOpen(); }

    bool write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = ::write(file_.get(), bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }

    bool setMode(mode_t mode) const { return fchmod(file_.get(), mode) == 0; }
    bool flush() const { return fsync(file_.get()) == 0; }

    bool renameTo(const std::string& path) {
        isRenamed_ = std::rename(path_.c_str(), path.c_str()) == 0;
        return isRenamed_;
    }

 private:
    static std::string randomName() {
        std::random_device random;
        return std::to_string(random()) + std::to_string(random());
    }

    std::string path_;
    FileDescriptor file_;
    bool isRenamed_ = false;
};

/// Makes the new name survive a power loss. Some file systems cannot do that; the file is in place
/// by now, so a failure is ignored.
void flushFolder(const std::string& folder) {
    const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen()) (void)fsync(descriptor.get());
}

/// The mode of the new file. If the old file could not be read, the new one must be readable, or it
/// would be replaced again each time.
std::optional<mode_t> newMode(const Target& target, OldFile old) {
    if (!target.mode || old == OldFile::Dropped) return target.mode;
    return *target.mode | S_IRUSR;
}

/// Writes the whole contents to disk under a temporary name.
std::error_code fill(const TemporaryFile& file, std::string_view bytes,
                     std::optional<mode_t> mode) {
    const bool isFilled =
        file.isOpen() && file.write(bytes) && (!mode || file.setMode(*mode)) && file.flush();
    return isFilled ? std::error_code() : lastError();
}

}  // namespace

void makeFoldersAbove(const std::string& path) {
    for (std::size_t end = path.find('/', 1); end != std::string::npos;
         end = path.find('/', end + 1)) {
        (void)mkdir(path.substr(0, end).c_str(), newFolderMode);
    }
}

std::error_code writeFileAtomically(const std::string& path, std::string_view bytes, OldFile old) {
    if (path.empty() || path.find('\0') != std::string::npos)
        return std::make_error_code(std::errc::invalid_argument);
    const Target target = targetOf(path);
    if (target.error) return target.error;
    const std::string folder = folderOf(target.path);
    makeFoldersAbove(target.path);

    TemporaryFile file(folder, target.mode ? unfinishedMode : newFileMode);
    if (const auto error = fill(file, bytes, newMode(target, old))) return error;
    KeptFile kept(target.path, old == OldFile::Copied ? KeptFile::copy : KeptFile::unreadable);
    if (old != OldFile::Dropped) {
        if (const auto error = kept.keep()) return error;
        flushFolder(folder);  // Make the kept file durable first.
    }
    if (!file.renameTo(target.path)) return lastError();
    kept.commit();
    flushFolder(folder);
    return {};
}
