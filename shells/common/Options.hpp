#pragma once

#include "platform/foundation/Result.hpp"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace shell {

/// What is wrong, as a line for the user; nullopt if nothing is.
using Problem = std::optional<std::string>;

/// One option of a program's command line.
struct Option {
    std::string_view name;       ///< With its dashes: "--model".
    std::string_view valueName;  ///< What the help calls the value; empty for one without a value.
    /// One line in English, marked with translatable(): the help alone looks for its translation.
    const char* help;
    /// Stores the value ("" for an option without one), or says why it is not valid.
    std::function<Problem(const std::string& value)> take;
    char letter = '\0';  ///< The letter of its short form, "-h"; only without a value.
};

/// Passes every "--name VALUE", "--name=VALUE" and "--name" among the arguments (without the
/// program's name) to its option in order, so the last one counts. Returns nullopt, or a line for
/// the user about the first invalid argument; those before it have been applied.
Problem readOptions(std::span<const Option> options, std::span<const char* const> arguments);

/// The same for a program that also takes other words, anywhere among the options. A lone dash, a
/// negative number ("-5%") and everything after "--" are such words, and returned.
Result<std::vector<std::string>> readOptionsAndOperands(std::span<const Option> options,
                                                        std::span<const char* const> arguments);

/// The usage line and a line for each option.
std::string helpText(std::string_view usage, std::span<const Option> options);

/// The options of every shell.
struct CommonOptions {
    std::optional<std::string> preferences;  ///< The folder of both files of the mixer.
    std::optional<std::string> model;        ///< The machine model, such as "iPad4,1".
    std::vector<std::string> bundles;        ///< The folders of widgets' bundles.
    bool help = false;
    bool version = false;
};

/// --preferences, --model, --bundle, --help (-h) and --version. They write into `target`, which
/// must outlive them. A program adds its own to them.
std::vector<Option> commonOptions(CommonOptions& target);

/// Applies the chosen preferences folder and model to the platform.
void applyOptions(const CommonOptions& options);

/// Reports an invalid command line, and how to get help.
void complainOfMisuse(std::string_view error);

/// If --help or --version was given: prints the answer to standard output, reports a failure to
/// write it, and returns the exit status.
std::optional<int> answerQuestions(const CommonOptions& chosen, std::string_view usage,
                                   std::span<const Option> options);

}  // namespace shell
