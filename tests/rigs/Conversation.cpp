#include "tests/rigs/Conversation.hpp"

#include <stdexcept>

namespace rigs {

Conversation::Conversation(const std::vector<std::string>& words,
                           const test::Environment& environment)
    : name_(words[0]),
      program_(words, {.environment = environment, .input = test::RunningProgram::Input::Pipe}) {
    answer();
}

std::string Conversation::ask(const std::string& line) {
    program_.write(line + "\n");
    std::string said = answer();
    if (said.starts_with("error")) throw std::runtime_error(name_ + ": " + said);
    return said;
}

std::string Conversation::answer() {
    auto line = program_.nextLine();
    if (!line) throw std::runtime_error(name_ + " has ended: " + program_.complaints());
    return *std::move(line);
}

}  // namespace rigs
