#include "shells/common/Process.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

namespace shell {

namespace {

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

bool prepareProcess() {
    std::signal(SIGPIPE, SIG_IGN);
    ignoreRelativeFolders();
    return holdStandardDescriptors();
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
    if (error == EBADF) return "standard output is closed";
    return std::string("standard output: ") + std::strerror(error);
}

}  // namespace shell
