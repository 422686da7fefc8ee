#include "shells/common/Options.hpp"

#include <algorithm>

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

/// Takes the option at the front of the arguments, with its value, which may be the next one;
/// answers what is wrong with it.
std::optional<std::string> takeOption(std::span<const Option> options,
                                      std::span<const char* const>& arguments) {
    const std::string argument = arguments.front();
    arguments = arguments.subspan(1);
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const Option* option = find(options, name);
    if (option == nullptr) return "unknown argument '" + argument + "'";

    std::string value;
    if (option->valueName.empty()) {
        if (equals != std::string::npos) return name + " takes no value";
    } else if (equals != std::string::npos) {
        value = argument.substr(equals + 1);
    } else {
        if (arguments.empty()) return name + " needs a value: " + std::string(option->valueName);
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

}  // namespace

std::optional<std::string> readOptions(std::span<const Option> options,
                                       std::span<const char* const> arguments) {
    while (!arguments.empty())
        if (auto error = takeOption(options, arguments)) return error;
    return std::nullopt;
}

Operands readOptionsAndOperands(std::span<const Option> options,
                                std::span<const char* const> arguments) {
    Operands operands;
    while (!arguments.empty() && !operands.error) {
        const std::string_view word = arguments.front();
        if (!isOperand(word) && word != "--") {
            operands.error = takeOption(options, arguments);
            continue;
        }
        arguments = arguments.subspan(1);
        if (word == "--") {
            operands.words.insert(operands.words.end(), arguments.begin(), arguments.end());
            break;
        }
        operands.words.emplace_back(word);
    }
    return operands;
}

std::string helpText(std::string_view usage, std::span<const Option> options) {
    std::string text = "Usage: " + std::string(usage) + "\n\n";
    for (const Option& option : options)
        text += leftColumn(option) + std::string(option.help) + "\n";
    return text;
}

}  // namespace shell
