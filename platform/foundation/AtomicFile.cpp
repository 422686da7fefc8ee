#include "platform/foundation/FileContents.hpp"
#include "platform/foundation/FileDescriptor.hpp"

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

/// What a path leads to in the end.
struct Target {
    std::string path;            ///< No symbolic link.
    std::optional<mode_t> mode;  ///< Of the file that is there already.
};

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

/// nullopt when the path can't be a file: it is a folder, a pipe, a device, a circle of links.
std::optional<Target> targetOf(std::string path) {
    constexpr int maximumLinks = 40;
    for (int links = 0; links <= maximumLinks; ++links) {
        struct stat status {};
        if (lstat(path.c_str(), &status) != 0) {
            if (errno != ENOENT) return std::nullopt;
            return Target{path, std::nullopt};
        }
        if (S_ISREG(status.st_mode)) return Target{path, status.st_mode & 07777};
        if (!S_ISLNK(status.st_mode)) return std::nullopt;
        path = destinationOfLink(path);
        if (path.empty()) return std::nullopt;
    }
    return std::nullopt;
}

/// Makes the folder and those above it that are missing. Failure shows when the file is opened.
void makeFolder(const std::string& folder) {
    for (std::size_t end = folder.find('/', 1); end != std::string::npos;
         end = folder.find('/', end + 1)) {
        (void)mkdir(folder.substr(0, end).c_str(), newFolderMode);
    }
}

/// A new file that goes away unless it gets its final name.
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

/// So that the new name, too, outlives a loss of power. Some file systems can't, and by now the
/// file is in place, so this has no failure.
void flushFolder(const std::string& folder) {
    const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen()) (void)fsync(descriptor.get());
}

}  // namespace

bool writeFileAtomically(const std::string& path, std::string_view bytes) {
    if (path.empty() || path.find('\0') != std::string::npos) return false;
    const std::optional<Target> target = targetOf(path);
    if (!target) return false;
    const std::string folder = folderOf(target->path);
    makeFolder(folder);

    TemporaryFile file(folder, target->mode ? unfinishedMode : newFileMode);
    const bool isWritten = file.isOpen() && file.write(bytes) &&
                           (!target->mode || file.setMode(*target->mode)) && file.flush() &&
                           file.renameTo(target->path);
    if (isWritten) flushFolder(folder);
    return isWritten;
}
