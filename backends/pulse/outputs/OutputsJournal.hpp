#pragma once

#include "backends/pulse/mirror/ServerMirror.hpp"
#include "platform/foundation/FileLock.hpp"
#include "platform/foundation/NSString.hpp"

#include <filesystem>
#include <map>
#include <string>

namespace pulse {

/// Where programs keep what they remember: $XDG_STATE_HOME, or ~/.local/state.
std::filesystem::path userStateFolder();

/// What is known of the outputs for roles beyond the server's life: the user's choice, how far the
/// last change got, and what it still needs. Whoever reads it can finish the change.
struct OutputsJournal {
    /// Undecided users are offered the switch once.
    enum class Choice { Undecided, Declined, Apart, Shared };
    enum class Phase {
        Down,       ///< There are none.
        GoingUp,    ///< They are being made for the first time; `kept` has the volumes they get.
        Returning,  ///< They are being made again; `kept` has the volumes that they had, if known.
        Up,         ///< They are there.
        Turning,    ///< They are being moved to the output that the user picked.
        GoingDown,  ///< They are being removed; `kept` has the volumes of what remains.
    };

    Choice choice = Choice::Undecided;
    Phase phase = Phase::Down;
    /// The name of the sink behind the outputs.
    std::string real{};
    /// Volumes by the role of an output; "real" stands for the sink behind.
    std::map<std::string, ObjectVolume> kept{};
};

/// The journal's file, shared by every mixer of the user. A change is made only by the process that
/// has locked it, and the lock ends with the process.
///
///     if (file.lock() == FileLock::State::Ours) {
///         journal = file.read();  // Another process may have changed it.
///         ...
///         file.write(journal);
///         file.unlock();
///     }
///
/// Reads and writes a few hundred bytes, so it does not block for long. Main thread.
class OutputsFile {
 public:
    /// In $XDG_STATE_HOME/tarnwick, or in ~/.local/state/tarnwick.
    OutputsFile();

    const std::filesystem::path& path() const { return path_; }

    /// The default where there is no file; also for each value that is missing or malformed.
    OutputsJournal read() const;
    /// Replaces the file; or why that failed, in words for users.
    NSString write(const OutputsJournal& journal) const;

    /// Makes the folder if need be.
    FileLock::State lock();
    void unlock() { lock_.release(); }
    bool isLocked() const { return lock_.isHeld(); }

 private:
    std::filesystem::path path_;
    FileLock lock_;
};

}  // namespace pulse
