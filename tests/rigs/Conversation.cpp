#include "tests/rigs/Conversation.hpp"

#include "tests/rigs/Waiting.hpp"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace rigs {

Conversation::Conversation(const std::vector<std::string>& words,
                           const ChildProcess::Setting& setting)
    : name_(words[0]), log_(setting.log) {
    std::signal(SIGPIPE, SIG_IGN);  // Writing to a program that has left is a failed write.
    int input[2];
    int output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe for " + name_);
    input_ = input[1];
    output_ = output[0];
    ChildProcess::Setting all = setting;
    all.input = input[0];
    all.output = output[1];
    program_ = ChildProcess(words, all);
    close(input[0]);
    close(output[1]);
    answer();
}

Conversation::~Conversation() {
    close(input_);
    close(output_);
}

std::string Conversation::ask(const std::string& line) {
    const std::string bytes = line + "\n";
    if (write(input_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        throw std::runtime_error(name_ + " does not listen");
    std::string said = answer();
    if (said.starts_with("error")) throw std::runtime_error(name_ + ": " + said);
    return said;
}

std::string Conversation::logged() const {
    std::ifstream file(log_);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string Conversation::answer() {
    std::size_t end = 0;
    while ((end = unread_.find('\n')) == std::string::npos) {
        pollfd watched{output_, POLLIN, 0};
        char bytes[4096];
        const bool came = poll(&watched, 1, static_cast<int>(patienceSeconds * 1000)) == 1;
        const ssize_t count = came ? read(output_, bytes, sizeof bytes) : 0;
        if (count <= 0) throw std::runtime_error(name_ + " says nothing; the log: " + logged());
        unread_.append(bytes, static_cast<std::size_t>(count));
    }
    std::string line = unread_.substr(0, end);
    unread_.erase(0, end + 1);
    return line;
}

}  // namespace rigs
