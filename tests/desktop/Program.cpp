#include "tests/desktop/Program.hpp"

namespace test {
namespace {

std::vector<std::string> commandLine(const std::vector<std::string>& arguments) {
    std::vector<std::string> words = {TARNWICK_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

Environment withoutASession(const Environment& changes) {
    Environment environment = changes;
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        environment.try_emplace(name, "");
    environment.try_emplace("PULSE_SERVER", "unix:/nowhere");
    return environment;
}

}  // namespace

Ended runProgram(const std::vector<std::string>& arguments, const Environment& environment,
                 RunningProgram::Error error) {
    return runToEnd(commandLine(arguments),
                    {.environment = withoutASession(environment), .error = error});
}

Ended runProgramUntilSignal(const std::vector<std::string>& arguments,
                            const Environment& environment, int signal) {
    RunningProgram program(commandLine(arguments), {.environment = withoutASession(environment)});
    program.waitForComplaint("preferredViewSize");
    program.signal(signal);
    return remainsOf(program);
}

}  // namespace test
