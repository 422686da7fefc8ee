#include "tests/processes/ChildProcess.hpp"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace test {
namespace {

using Clock = std::chrono::steady_clock;

// In the form that exec wants; valid as long as `words` is.
std::vector<char*> pointersTo(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environmentWith(const Environment& changes) {
    std::vector<std::string> result;
    for (char** each = environ; *each; ++each) {
        const std::string variable = *each;
        if (!changes.count(variable.substr(0, variable.find('=')))) result.push_back(variable);
    }
    for (const auto& [name, value] : changes)
        if (!value.empty()) result.push_back(name + "=" + value);
    return result;
}

// In the child, between fork and exec: nothing here may allocate.
[[noreturn]] void become(char* const* words, char* const* environment, int input, int output,
                         int error, pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(127);  // It ended before the line above.
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(error, STDERR_FILENO);
    std::signal(SIGPIPE, SIG_DFL);  // As in a terminal, whatever this test does with it.
    execvpe(words[0], words, environment);
    dprintf(STDERR_FILENO, "%s cannot be run: %s\n", words[0], std::strerror(errno));
    _exit(127);
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& words)
    : ChildProcess(words, Setting{}) {}

ChildProcess::ChildProcess(const std::vector<std::string>& words, const Setting& setting) {
    std::vector<std::string> arguments = words;
    std::vector<std::string> variables = environmentWith(setting.environment);
    const auto argumentPointers = pointersTo(arguments);
    const auto variablePointers = pointersTo(variables);
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    const int log = setting.log.empty() ? nothing
                                        : open(setting.log.c_str(),
                                               O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    const pid_t parent = getpid();
    id_ = fork();
    if (id_ == 0)
        become(argumentPointers.data(), variablePointers.data(),
               setting.input < 0 ? nothing : setting.input,
               setting.output < 0 ? nothing : setting.output,
               setting.error < 0 ? log : setting.error, parent);
    if (log != nothing) close(log);
    close(nothing);
    if (id_ < 0) throw std::runtime_error("no process for " + words[0]);
}

ChildProcess::~ChildProcess() {
    if (!id_) return;
    signal(SIGKILL);
    wait();
}

void ChildProcess::signal(int number) const {
    if (id_) kill(id_, number);
}

int ChildProcess::wait() {
    int status = -1;
    if (id_) waitpid(std::exchange(id_, 0), &status, 0);
    return status;
}

std::optional<int> ChildProcess::waitAtMost(double seconds) {
    const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
    int status = -1;
    while (id_ && waitpid(id_, &status, WNOHANG) == 0) {
        if (Clock::now() > deadline) return std::nullopt;
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    id_ = 0;
    return status;
}

bool ChildProcess::hasEnded() {
    if (id_ && waitpid(id_, nullptr, WNOHANG) == id_) id_ = 0;
    return !id_;
}

void ChildProcess::waitUntilStopped() const {
    if (id_) waitpid(id_, nullptr, WUNTRACED);
}

long sleepsOf(pid_t process) {
    long sleeps = 0;
    const std::string tasks = "/proc/" + std::to_string(process) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks)) {
        std::ifstream status(task.path() / "status");
        std::string word;
        while (status >> word)
            if (word == "voluntary_ctxt_switches:" && status >> word) sleeps += std::stol(word);
    }
    return sleeps;
}

double processorSecondsOf(pid_t process) {
    clockid_t clock{};
    timespec used{};
    if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &used) != 0)
        throw std::runtime_error("no such process");
    constexpr double nanosecond = 1e-9;
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) * nanosecond;
}

}  // namespace test
