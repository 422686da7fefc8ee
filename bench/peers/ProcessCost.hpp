#pragma once

#include <sys/types.h>

namespace peers {

/// A process's memory, as the kernel reports it.
struct Memory {
    double proportional = 0;  ///< Kilobytes; shared pages count by their share.
    double own = 0;           ///< Kilobytes in private pages.
};
Memory memoryOf(pid_t process);

/// What all threads of a process have used since it started.
struct Work {
    double processorMilliseconds = 0;
    double wakeUps = 0;  ///< Voluntary context switches.

    Work operator-(const Work& before) const {
        return {processorMilliseconds - before.processorMilliseconds, wakeUps - before.wakeUps};
    }
};
Work workOf(pid_t process);

}  // namespace peers
