#include "tests/processes/RunningProgram.hpp"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>
#include <utility>

namespace test {
namespace {

using Clock = std::chrono::steady_clock;
constexpr double patience = 30;   // Seconds; only what is broken takes so long.
constexpr double shortly = 0.05;  // Seconds.

Clock::time_point inSeconds(double seconds) {
    const std::chrono::duration<double> span(seconds);
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(span);
}

/// The end to read from and the end to write to.
std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return ends;
}

std::array<int, 2> makeTerminal() {
    std::array<int, 2> ends{};
    if (openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr) != 0)
        throw std::runtime_error("no terminal");
    for (const int end : ends)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    return ends;
}

void closeEnd(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

}  // namespace

RunningProgram::RunningProgram(const std::vector<std::string>& words, const Setting& setting)
    : error_(memfd_create("standard error", MFD_CLOEXEC)) {
    ChildProcess::Setting ends{.environment = setting.environment, .error = error_};
    if (setting.input == Input::Pipe) {
        std::signal(SIGPIPE, SIG_IGN);  // Writing to a program that has left is a failed write.
        const auto [reading, writing] = makePipe();
        ends.input = reading;
        input_ = writing;
    }
    const auto [reading, writing] = setting.output == Output::Pipe ? makePipe() : makeTerminal();
    ends.output = writing;
    output_ = reading;
    int withoutReader = -1;
    if (setting.error == Error::WithoutReader) {
        const auto [reader, writer] = makePipe();
        close(reader);
        ends.error = withoutReader = writer;
    }
    process_ = ChildProcess(words, ends);
    closeEnd(ends.input);
    closeEnd(ends.output);
    closeEnd(withoutReader);
}

RunningProgram::~RunningProgram() {
    closeInput();
    closeOutput();
    closeEnd(error_);
}

void RunningProgram::fail(const std::string& reason) const {
    throw std::runtime_error("the program " + reason + "; it said: " + complaints());
}

void RunningProgram::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::write(input_, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail("takes no more input");
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void RunningProgram::closeInput() {
    closeEnd(input_);
}

std::optional<std::string> RunningProgram::nextLine() {
    auto line = lineWithin(patience);
    if (!line && !ended_) fail("printed no line in time");
    return line;
}

std::optional<std::string> RunningProgram::lineSoon() {
    return lineWithin(shortly);
}

std::optional<std::string> RunningProgram::lineWithin(double seconds) {
    const Time deadline = inSeconds(seconds);
    for (;;) {
        if (const std::size_t end = unread_.find('\n'); end != std::string::npos) {
            std::string line = unread_.substr(0, end);
            unread_.erase(0, end + 1);
            if (line.ends_with('\r')) line.pop_back();  // A terminal's line ends.
            return line;
        }
        if (!readMore(deadline)) return std::nullopt;
    }
}

bool RunningProgram::readMore(Time deadline) {
    for (;;) {
        const std::chrono::duration<double, std::milli> left = deadline - Clock::now();
        pollfd watched{.fd = output_, .events = POLLIN, .revents = 0};
        if (poll(&watched, 1, std::max(0, static_cast<int>(left.count()))) <= 0) return false;
        char bytes[65536];
        const ssize_t count = read(output_, bytes, sizeof bytes);
        if (count < 0 && errno == EINTR) continue;
        ended_ = count <= 0;  // A terminal ends with an error.
        if (!ended_) unread_.append(bytes, static_cast<std::size_t>(count));
        return !ended_;
    }
}

std::string RunningProgram::rest() {
    const auto deadline = inSeconds(patience);
    while (readMore(deadline)) {
    }
    if (!ended_) fail("does not end");
    return std::exchange(unread_, {});
}

void RunningProgram::closeOutput() {
    closeEnd(output_);
}

int RunningProgram::finish() {
    closeInput();
    const auto status = process_.waitAtMost(patience);
    if (!status) fail("does not end");
    return WIFEXITED(*status) ? WEXITSTATUS(*status) : -WTERMSIG(*status);
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

void RunningProgram::waitForComplaint(std::string_view text) const {
    const auto deadline = inSeconds(patience);
    while (complaints().find(text) == std::string::npos) {
        if (Clock::now() > deadline) fail("does not say \"" + std::string(text) + "\"");
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

Ended remainsOf(RunningProgram& program) {
    Ended ended;
    ended.output = program.rest();
    ended.status = program.finish();
    ended.complaints = program.complaints();
    return ended;
}

Ended runToEnd(const std::vector<std::string>& words, const RunningProgram::Setting& setting) {
    RunningProgram program(words, setting);
    return remainsOf(program);
}

std::string outputOf(const std::vector<std::string>& words, const Environment& environment) {
    RunningProgram program(words, {.environment = environment});
    std::string output = program.rest();
    if (program.finish() == 0) return output;
    std::string line;
    for (const std::string& word : words)
        line += word + " ";
    throw std::runtime_error(line + "failed: " + program.complaints() + output);
}

}  // namespace test
