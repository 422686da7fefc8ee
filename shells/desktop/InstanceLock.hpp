#pragma once

/// A lock in the user's runtime folder, held by one mixer at a time: by it a start knows at once,
/// and without a bus, that it is the first.
class InstanceLock {
 public:
    enum class State {
        Ours,
        Taken,    ///< By another process, which may be of another session of the same user.
        Unknown,  ///< There is no folder for it.
    };

    InstanceLock() = default;
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// Never waits. What is ours stays so until the end of this, or of the process.
    State take();

 private:
    int file_ = -1;
};
