#pragma once

#include <string>

/// A lock in the user's runtime folder, held by one mixer of a session at a time: by it a start
/// knows at once, and without asking the bus, that it is the first.
class InstanceLock {
 public:
    enum class State {
        Ours,
        Taken,    ///< By another process.
        Unknown,  ///< There is no folder for it.
    };

    InstanceLock() = default;
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// For the session of that bus. Never waits. What is ours stays so until the end of this, or of
    /// the process.
    State take(const std::string& busAddress);

 private:
    int file_ = -1;
};
