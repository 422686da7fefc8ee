#include "shells/common/CommonOptions.hpp"

#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/Process.hpp"

#include <cstdio>
#include <cstdlib>

namespace shell {
namespace {

auto storeIn(std::optional<std::string>& target) {
    return [&target](const std::string& value) -> std::optional<std::string> {
        if (value.empty()) return "the value is empty";
        target = value;
        return std::nullopt;
    };
}

auto addTo(std::vector<std::string>& target) {
    return [&target](const std::string& value) -> std::optional<std::string> {
        if (value.empty()) return "the value is empty";
        target.push_back(value);
        return std::nullopt;
    };
}

auto raise(bool& flag) {
    return [&flag](const std::string&) -> std::optional<std::string> {
        flag = true;
        return std::nullopt;
    };
}

}  // namespace

std::vector<Option> commonOptions(CommonOptions& target) {
    return {
        {"--preferences", "DIR", "the folder of the settings and the category file",
         storeIn(target.preferences)},
        {"--model", "NAME", "the machine model, such as iPhone6,1 or iPad4,1",
         storeIn(target.model)},
        {"--bundle", "DIR", "the folder of a widget's bundle", addTo(target.bundles)},
        {"--help", "", "print this and leave", raise(target.help), 'h'},
        {"--version", "", "print the version and leave", raise(target.version)},
    };
}

void applyOptions(const CommonOptions& options) {
    if (options.preferences) setPreferencesDirectory(*options.preferences);
    if (options.model) setMachineModel(*options.model);
}

void complainOfMisuse(std::string_view program, std::string_view error) {
    complain(program, error);
    const std::string name(program);
    std::fprintf(stderr, "Try '%s --help'.\n", name.c_str());
}

std::optional<int> answerQuestions(const CommonOptions& chosen, std::string_view program,
                                   std::string_view usage, std::span<const Option> options) {
    if (!chosen.help && !chosen.version) return std::nullopt;
    const std::string answer =
        chosen.help ? helpText(usage, options) : std::string(program) + " " TARNWICK_VERSION "\n";
    const int error = writeToStandardOutput(answer);
    if (error == 0) return EXIT_SUCCESS;
    complain(program, outputComplaint(error));
    return EXIT_FAILURE;
}

}  // namespace shell
