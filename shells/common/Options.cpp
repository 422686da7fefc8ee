#include "shells/common/Options.hpp"

#include <algorithm>

namespace shell {
namespace {

constexpr std::size_t helpColumn = 26;  // Characters before an option's explanation.

const Option* find(std::span<const Option> options, std::string_view name) {
    const auto found = std::ranges::find(options, name, &Option::name);
    return found == options.end() ? nullptr : &*found;
}

std::string leftColumn(const Option& option) {
    std::string left = "  ";
    left += option.name;
    if (!option.valueName.empty()) left.append(" ").append(option.valueName);
    left.resize(std::max(helpColumn, left.size() + 2), ' ');
    return left;
}

}  // namespace

std::optional<std::string> readOptions(std::span<const Option> options,
                                       std::span<const char* const> arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string argument = arguments[i];
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
            if (i + 1 == arguments.size())
                return name + " needs a value: " + std::string(option->valueName);
            value = arguments[++i];
        }
        if (const auto error = option->take(value)) return name + ": " + *error;
    }
    return std::nullopt;
}

std::string helpText(std::string_view usage, std::span<const Option> options) {
    std::string text = "Usage: " + std::string(usage) + "\n\n";
    for (const Option& option : options)
        text += leftColumn(option) + std::string(option.help) + "\n";
    return text;
}

}  // namespace shell
