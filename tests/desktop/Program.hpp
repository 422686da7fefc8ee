#pragma once

#include "tests/processes/RunningProgram.hpp"

#include <string>
#include <vector>

namespace test {

/// Runs the desktop program to its end, without a display, a session bus or a sound server of the
/// machine, and with the environment's other entries changed as told.
Ended runProgram(const std::vector<std::string>& arguments, const Environment& environment = {},
                 RunningProgram::Error error = RunningProgram::Error::Kept);

/// Runs the desktop program with a display until it has presented its widget, then sends it the
/// signal.
Ended runProgramUntilSignal(const std::vector<std::string>& arguments,
                            const Environment& environment, int signal);

}  // namespace test
