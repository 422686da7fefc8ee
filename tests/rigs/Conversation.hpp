#pragma once

#include "tests/processes/RunningProgram.hpp"

#include <string>
#include <vector>

namespace rigs {

/// A program that answers each line on its standard input with a line.
class Conversation {
 public:
    /// Starts the program and waits for its first line. Throws std::runtime_error if a line does
    /// not come in time.
    Conversation(const std::vector<std::string>& words, const test::Environment& environment);

    /// Throws also when the answer begins with "error".
    std::string ask(const std::string& line);

 private:
    std::string answer();

    std::string name_;
    test::RunningProgram program_;
};

}  // namespace rigs
