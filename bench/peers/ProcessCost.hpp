#pragma once

#include <sys/types.h>

namespace peers {

/// What the kernel says that a process holds.
struct Memory {
    double proportional = 0;  ///< Kilobytes; what is shared is divided by its holders.
    double own = 0;           ///< Kilobytes that nobody shares.
};
Memory memoryOf(pid_t process);

/// What it has used since it began, in all its threads.
struct Work {
    double processorMilliseconds = 0;
    double wakeUps = 0;  ///< How often a thread has waited for something and gone on.

    Work operator-(const Work& before) const {
        return {processorMilliseconds - before.processorMilliseconds, wakeUps - before.wakeUps};
    }
};
Work workOf(pid_t process);

}  // namespace peers
