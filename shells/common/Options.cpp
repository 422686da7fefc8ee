#include "shells/common/Options.hpp"

#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace shell {
namespace {

constexpr std::size_t helpColumn = 26;  // Characters before an option's explanation.

std::string shortForm(const Option& option) {
    return {'-', option.letter};
}

const Option* find(std::span<const Option> options, std::string_view name) {
    const auto found = std::ranges::find_if(options, [name](const Option& option) {
        return option.name == name || (option.letter != '\0' && name == shortForm(option));
    });
    return found == options.end() ? nullptr : &*found;
}

std::string leftColumn(const Option& option) {
    std::string left = "  ";
    if (option.letter != '\0') left += shortForm(option) + ", ";
    left += option.name;
    if (!option.valueName.empty()) left.append(" ").append(option.valueName);
    left.resize(std::max(helpColumn, left.size() + 2), ' ');
    return left;
}

/// Handles the option at the front of the arguments with its value, which may be the next argument;
/// returns the error.
Problem takeOption(std::span<const Option> options, std::span<const char* const>& arguments) {
    const std::string argument = arguments.front();
    arguments = arguments.subspan(1);
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const Option* option = find(options, name);
    if (option == nullptr)
        return filled(translated("unknown argument '{argument}'"), {{"argument", argument}});

    std::string value;
    if (option->valueName.empty()) {
        if (equals != std::string::npos)
            return filled(translated("{option} takes no value"), {{"option", name}});
    } else if (equals != std::string::npos) {
        value = argument.substr(equals + 1);
    } else {
        if (arguments.empty())
            return filled(translated("{option} needs a value: {value}"),
                          {{"option", name}, {"value", option->valueName}});
        value = arguments.front();
        arguments = arguments.subspan(1);
    }
    if (const auto error = option->take(value)) return name + ": " + *error;
    return std::nullopt;
}

bool isOperand(std::string_view word) {
    if (!word.starts_with('-') || word == "-") return true;
    constexpr std::string_view numberBegins = "0123456789.";
    return numberBegins.find(word[1]) != std::string_view::npos;
}

auto storeIn(std::optional<std::string>& target) {
    return [&target](const std::string& value) -> Problem {
        if (value.empty()) return translated("the value is empty");
        target = value;
        return std::nullopt;
    };
}

auto addTo(std::vector<std::string>& target) {
    return [&target](const std::string& value) -> Problem {
        if (value.empty()) return translated("the value is empty");
        target.push_back(value);
        return std::nullopt;
    };
}

auto raise(bool& flag) {
    return [&flag](const std::string&) -> Problem {
        flag = true;
        return std::nullopt;
    };
}

}  // namespace

Problem readOptions(std::span<const Option> options, std::span<const char* const> arguments) {
    while (!arguments.empty())
        if (auto error = takeOption(options, arguments)) return error;
    return std::nullopt;
}

Result<std::vector<std::string>> readOptionsAndOperands(std::span<const Option> options,
                                                        std::span<const char* const> arguments) {
    std::vector<std::string> words;
    while (!arguments.empty()) {
        const std::string_view word = arguments.front();
        if (!isOperand(word) && word != "--") {
            if (auto problem = takeOption(options, arguments)) return Failure{*problem};
            continue;
        }
        arguments = arguments.subspan(1);
        if (word == "--") {
            words.insert(words.end(), arguments.begin(), arguments.end());
            break;
        }
        words.emplace_back(word);
    }
    return words;
}

std::string helpText(std::string_view usage, std::span<const Option> options) {
    std::string text = filled(translated("Usage: {usage}"), {{"usage", usage}}) + "\n\n";
    for (const Option& option : options)
        text += leftColumn(option) + translated(option.help) + "\n";
    return text;
}

std::vector<Option> commonOptions(CommonOptions& target) {
    return {
        {"--preferences", "DIR", translatable("the folder of the settings and the category file"),
         storeIn(target.preferences)},
        {"--model", "NAME", translatable("the machine model, such as iPhone6,1 or iPad4,1"),
         storeIn(target.model)},
        {"--bundle", "DIR", translatable("the folder of a widget's bundle"), addTo(target.bundles)},
        {"--help", "", translatable("print this and leave"), raise(target.help), 'h'},
        {"--version", "", translatable("print the version and leave"), raise(target.version)},
    };
}

void applyOptions(const CommonOptions& options) {
    if (options.preferences) setPreferencesDirectory(*options.preferences);
    if (options.model) setMachineModel(*options.model);
}

void complainOfMisuse(std::string_view error) {
    complain(error);
    const std::string advice =
        filled(translated("Try '{program} --help'."), {{"program", programName()}});
    std::fprintf(stderr, "%s\n", advice.c_str());
}

std::optional<int> answerQuestions(const CommonOptions& chosen, std::string_view usage,
                                   std::span<const Option> options) {
    if (!chosen.help && !chosen.version) return std::nullopt;
    const std::string answer =
        chosen.help ? helpText(usage, options) : programName() + " " TARNWICK_VERSION "\n";
    const int error = writeToStandardOutput(answer);
    if (error == 0) return EXIT_SUCCESS;
    return complain(EXIT_FAILURE, outputComplaint(error));
}

}  // namespace shell
