#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace shell {

/// One option of a program's command line.
struct Option {
    std::string_view name;       ///< With its dashes: "--model".
    std::string_view valueName;  ///< What the help calls the value; empty for one without a value.
    std::string_view help;       ///< One line.
    /// Takes the value ("" for an option without one); answers what is wrong with it, or nullopt.
    std::function<std::optional<std::string>(const std::string& value)> take;
    char letter = '\0';  ///< Of its short form, "-h"; for an option without a value.
};

/// Hands every "--name VALUE", "--name=VALUE" and "--name" among the arguments (the program's name
/// not among them) to its option, in their order, so the last one of a name counts. Answers
/// nullopt, or a line for the user about the first argument that does not fit; what came before it
/// has been taken.
std::optional<std::string> readOptions(std::span<const Option> options,
                                       std::span<const char* const> arguments);

/// What stands on a command line besides the options, or what is wrong with it.
struct Operands {
    std::vector<std::string> words;
    std::optional<std::string> error;
};

/// The same for a program that takes other words too, wherever they stand among the options. A
/// lone dash, a negative number ("-5%") and everything after "--" are such words.
Operands readOptionsAndOperands(std::span<const Option> options,
                                std::span<const char* const> arguments);

/// The usage line and a line for each option.
std::string helpText(std::string_view usage, std::span<const Option> options);

}  // namespace shell
