#pragma once

#include "shells/headless/Answer.hpp"
#include "shells/headless/Words.hpp"

#include <optional>
#include <span>
#include <string_view>

namespace headless {

class Session;
using Arguments = std::span<const Word>;

/// One word of the command language.
struct Command {
    std::string_view name;
    std::string_view parameters;  ///< As in the reference; part of the answer to a misuse.
    std::size_t fewestArguments;
    std::size_t mostArguments;
    /// nullopt if the arguments do not fit the command.
    std::optional<Answer> (*run)(Session& session, Arguments arguments);
};

std::span<const Command> controllerCommands();
std::span<const Command> deviceCommands();
std::span<const Command> inputCommands();
std::span<const Command> reportCommands();
std::span<const Command> timeCommands();
/// The only command that considers the events of the command before it.
inline constexpr std::string_view waitCommand = "wait";

/// nullptr when there is no command of that name.
const Command* commandNamed(std::string_view name);

/// Executes the words of one line. Always returns an answer.
Answer answerTo(Session& session, Arguments words);

}  // namespace headless
