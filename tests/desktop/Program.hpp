#pragma once

#include <map>
#include <string>
#include <vector>

namespace test {

/// What a program that has ended left behind.
struct Ended {
    int status = -1;  ///< -1 when a signal ended it.
    std::string output;
    std::string complaints;
};

/// Whether somebody reads standard error, or has gone: then a write to it is a broken pipe.
enum class Complaints { Read, WithoutReader };

/// Runs the desktop program to its end, without a display, a session bus or a sound server of the
/// machine, and with the environment's other entries changed as told.
Ended runProgram(const std::vector<std::string>& arguments,
                 const std::map<std::string, std::string>& environment = {},
                 Complaints complaints = Complaints::Read);

/// Runs the desktop program with a display until it has presented its widget, then sends it the
/// signal. Its complaints are all that it wrote to standard error.
Ended runProgramUntilSignal(const std::vector<std::string>& arguments,
                            const std::map<std::string, std::string>& environment, int signal);

}  // namespace test
