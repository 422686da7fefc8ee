#include "tests/control/RunningProgram.hpp"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <stdexcept>

namespace test {
namespace {

constexpr double patience = 20;   // Seconds; only what is broken takes so long.
constexpr double shortly = 0.05;  // Seconds.

/// The end to read from and the end to write to.
std::array<int, 2> makeChannel(RunningProgram::Output output) {
    std::array<int, 2> ends{};
    if (output == RunningProgram::Output::Pipe) {
        if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        return ends;
    }
    if (openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr) != 0)
        throw std::runtime_error("no terminal");
    for (const int end : ends)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    return ends;
}

}  // namespace

RunningProgram::RunningProgram(const std::vector<std::string>& words, Output output,
                               const rigs::Environment& environment)
    : error_(memfd_create("standard error", MFD_CLOEXEC)) {
    const auto [reading, writing] = makeChannel(output);
    output_ = reading;
    process_ =
        rigs::ChildProcess(words, {.environment = environment, .output = writing, .error = error_});
    close(writing);
}

RunningProgram::~RunningProgram() {
    closeOutput();
    close(error_);
}

std::optional<std::string> RunningProgram::nextLine() {
    auto line = lineWithin(patience);
    if (!line && !ended_) throw std::runtime_error("no line came; it said: " + complaints());
    return line;
}

std::optional<std::string> RunningProgram::lineSoon() {
    return lineWithin(shortly);
}

std::optional<std::string> RunningProgram::lineWithin(double seconds) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
    for (;;) {
        if (const std::size_t end = unread_.find('\n'); end != std::string::npos) {
            std::string line = unread_.substr(0, end);
            unread_.erase(0, end + 1);
            if (line.ends_with('\r')) line.pop_back();  // A terminal's line ends.
            return line;
        }
        const std::chrono::duration<double, std::milli> left = deadline - Clock::now();
        pollfd watched{.fd = output_, .events = POLLIN, .revents = 0};
        if (poll(&watched, 1, std::max(0, static_cast<int>(left.count()))) <= 0)
            return std::nullopt;
        char bytes[4096];
        const ssize_t count = read(output_, bytes, sizeof bytes);
        ended_ = count <= 0;  // A terminal ends with an error.
        if (ended_) return std::nullopt;
        unread_.append(bytes, static_cast<std::size_t>(count));
    }
}

void RunningProgram::closeOutput() {
    if (output_ >= 0) close(output_);
    output_ = -1;
}

int RunningProgram::finish() {
    const int status = process_.wait();
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::string RunningProgram::complaints() const {
    std::string text;
    char bytes[4096];
    for (;;) {
        const ssize_t count = pread(error_, bytes, sizeof bytes, static_cast<off_t>(text.size()));
        if (count <= 0) return text;
        text.append(bytes, static_cast<std::size_t>(count));
    }
}

Ended runToEnd(const std::vector<std::string>& words, const rigs::Environment& environment) {
    RunningProgram program(words, RunningProgram::Output::Pipe, environment);
    Ended ended;
    while (const auto line = program.nextLine())
        ended.output += *line + "\n";
    ended.status = program.finish();
    ended.complaints = program.complaints();
    return ended;
}

}  // namespace test
