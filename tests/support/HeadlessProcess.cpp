#include "tests/support/HeadlessProcess.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>

namespace test {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds patience(30);

[[noreturn]] void fail(const std::string& reason) {
    throw std::runtime_error("tarnwick-headless: " + reason);
}

std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) fail("no pipe");
    return ends;
}

void closeEnd(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

std::string textOf(const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

std::string summaryOf(const Json& event) {
    const std::string kind = event.at("event");
    if (kind == "log") return "log " + textOf(event.at("line"));
    if (kind == "notification") return "post " + textOf(event.at("name"));
    if (kind == "set-volume")
        return "set " + textOf(event.at("category")) + " " + textOf(event.at("volume"));
    if (kind == "volume-notification")
        return "volume " + textOf(event.at("category")) + " " + textOf(event.at("volume"));
    if (kind != "host") return event.dump();
    const std::string message = "host " + textOf(event.at("selector"));
    if (!event.contains("width")) return message;
    return message + " " + textOf(event.at("width")) + " x " + textOf(event.at("height"));
}

}  // namespace

std::vector<std::string> Reply::happened() const {
    std::vector<std::string> summaries;
    for (const Json& event : events)
        summaries.push_back(summaryOf(event));
    return summaries;
}

HeadlessProcess::HeadlessProcess(const std::vector<std::string>& arguments) {
    std::signal(SIGPIPE, SIG_IGN);  // Writing to a program that has left is a failed write.
    std::vector<std::string> command{TARNWICK_LAUNCHER TARNWICK_HEADLESS_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::vector<char*> words;
    for (std::string& word : command)
        words.push_back(word.data());
    words.push_back(nullptr);

    const auto [childInput, input] = makePipe();
    const auto [output, childOutput] = makePipe();
    input_ = input;
    output_ = output;
    error_ = memfd_create("standard error", MFD_CLOEXEC);
    process_ = fork();
    if (process_ == 0) {
        dup2(childInput, STDIN_FILENO);
        dup2(childOutput, STDOUT_FILENO);
        dup2(error_, STDERR_FILENO);
        execv(words[0], words.data());
        _exit(127);
    }
    close(childInput);
    close(childOutput);
    if (process_ < 0) fail("cannot be started");
}

HeadlessProcess::~HeadlessProcess() {
    closeEnd(input_);
    closeEnd(output_);
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    closeEnd(error_);
}

Reply HeadlessProcess::send(std::string_view command) {
    write(std::string(command) + "\n");
    return readReply();
}

Reply HeadlessProcess::readReply() {
    Reply reply;
    for (;;) {
        const auto text = readLine();
        if (!text) fail("ended without a result; it said: " + standardError());
        reply.line = Json::parse(*text);
        if (reply.line.contains("ok")) return reply;
        reply.events.push_back(std::move(reply.line));
    }
}

std::optional<std::string> HeadlessProcess::readLine() {
    const auto deadline = Clock::now() + patience;
    for (;;) {
        if (const std::size_t end = unread_.find('\n'); end != std::string::npos) {
            std::string line = unread_.substr(0, end);
            unread_.erase(0, end + 1);
            return line;
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd watched{.fd = output_, .events = POLLIN, .revents = 0};
        if (left.count() <= 0 || poll(&watched, 1, static_cast<int>(left.count())) == 0)
            fail("did not answer in time");
        char bytes[65536];
        const ssize_t count = read(output_, bytes, sizeof bytes);
        if (count < 0 && errno != EINTR) fail("its output cannot be read");
        if (count == 0) return std::nullopt;
        if (count > 0) unread_.append(bytes, static_cast<std::size_t>(count));
    }
}

void HeadlessProcess::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::write(input_, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail("takes no more input; it said: " + standardError());
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void HeadlessProcess::closeInput() {
    closeEnd(input_);
}

void HeadlessProcess::closeOutput() {
    closeEnd(output_);
}

int HeadlessProcess::finish() {
    closeInput();
    const auto deadline = Clock::now() + patience;
    int status = 0;
    while (waitpid(process_, &status, WNOHANG) == 0) {
        if (Clock::now() > deadline) fail("does not end");
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::string HeadlessProcess::standardError() const {
    std::string text;
    char bytes[4096];
    for (;;) {
        const ssize_t count = pread(error_, bytes, sizeof bytes, static_cast<off_t>(text.size()));
        if (count <= 0) return text;
        text.append(bytes, static_cast<std::size_t>(count));
    }
}

}  // namespace test
