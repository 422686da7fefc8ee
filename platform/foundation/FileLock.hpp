#pragma once

#include "platform/foundation/FileDescriptor.hpp"

#include <filesystem>
#include <optional>

/// A lock that one process at a time holds, on a file that is made for it. It ends with the
/// process, so a crash leaves nothing locked.
///
///     FileLock lock;
///     if (lock.take(folder / "outputs.lock") == FileLock::State::Ours) { ... }
class FileLock {
 public:
    enum class State {
        Ours,
        Taken,    ///< Held by another process, or by another object of this one.
        Unknown,  ///< The file cannot be made, for a reason that strerror(errno) gives.
    };

    /// Takes the lock, unless this object has it already. Never waits.
    State take(const std::filesystem::path& file);
    /// The same on a folder that is there, and on the folder itself: nothing is made in it.
    State takeFolder(const std::filesystem::path& folder);
    void release() { file_.reset(); }
    bool isHeld() const { return file_.has_value(); }

 private:
    State takeOpened(FileDescriptor opened);

    std::optional<FileDescriptor> file_;
};
