#include "shells/headless/Commands.hpp"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace headless {
namespace {

Answer misuseOf(const Command& command) {
    std::string usage = "usage: " + std::string(command.name);
    if (!command.parameters.empty()) usage.append(" ").append(command.parameters);
    return Answer::failed(usage);
}

}  // namespace

const Command* commandNamed(std::string_view name) {
    for (const auto& commands : {controllerCommands(), deviceCommands(), inputCommands(),
                                 reportCommands(), timeCommands()}) {
        const auto found = std::ranges::find(commands, name, &Command::name);
        if (found != commands.end()) return &*found;
    }
    return nullptr;
}

Answer answerTo(Session& session, Arguments words) {
    if (words.empty()) return Answer::failed("there is no command in the line");
    const Word& name = words.front();
    const Command* command = commandNamed(name.text);
    if (command == nullptr) return Answer::failed("unknown command '" + name.text + "'");

    const Arguments arguments = words.subspan(1);
    if (arguments.size() < command->fewestArguments || arguments.size() > command->mostArguments)
        return misuseOf(*command);
    try {
        return command->run(session, arguments).value_or(misuseOf(*command));
    } catch (const std::out_of_range& error) {  // The only exception that the widget throws.
        return Answer::failed(error.what());
    }
}

}  // namespace headless
