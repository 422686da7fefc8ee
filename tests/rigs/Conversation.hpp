#pragma once

#include "tests/rigs/ChildProcess.hpp"

#include <filesystem>
#include <string>
#include <vector>

namespace rigs {

/// A program that is told one thing a line on its standard input and answers one line each.
class Conversation {
 public:
    /// Waits for its first line. Throws std::runtime_error when it doesn't say it, as for every
    /// answer.
    Conversation(const std::vector<std::string>& words, const ChildProcess::Setting& setting);
    ~Conversation();
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    /// Throws also when the answer begins with "error".
    std::string ask(const std::string& line);

 private:
    std::string answer();
    std::string logged() const;

    std::string name_;
    std::filesystem::path log_;
    int input_ = -1;
    int output_ = -1;
    std::string unread_;
    ChildProcess program_;
};

}  // namespace rigs
