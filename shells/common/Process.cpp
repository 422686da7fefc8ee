#include "shells/common/Process.hpp"

#include "platform/foundation/NSLog.hpp"
#include "shells/common/Translation.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

namespace shell {
namespace {

std::string& nameOfProgram() {
    static std::string name = "tarnwick";
    return name;
}

bool holdStandardDescriptors() {
    bool hasOutput = true;
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) >= 0) continue;
        const bool isOutput = descriptor == STDOUT_FILENO;
        open("/dev/null", isOutput ? O_RDONLY : O_RDWR);
        hasOutput = hasOutput && !isOutput;
    }
    return hasOutput;
}

void ignoreRelativeFolders() {
    for (const char* name : {"HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME",
                             "XDG_RUNTIME_DIR", "XDG_STATE_HOME"}) {
        const char* folder = std::getenv(name);
        if (folder && *folder != '/') unsetenv(name);
    }
}

}  // namespace

bool prepareProcess(std::string_view program) {
    nameOfProgram() = program;
    std::signal(SIGPIPE, SIG_IGN);
    ignoreRelativeFolders();
    return holdStandardDescriptors();
}

const std::string& programName() {
    return nameOfProgram();
}

void complain(std::string_view what) {
    ::complain(programName(), what);
}

int complain(int status, std::string_view what) {
    complain(what);
    return status;
}

int writeToStandardOutput(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(STDOUT_FILENO, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

std::string outputComplaint(int error) {
    if (error == EBADF) return translated("standard output is closed");
    return filled(translated("standard output: {reason}"), {{"reason", std::strerror(error)}});
}

}  // namespace shell
