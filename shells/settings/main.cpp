#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/settings/SettingsApplication.hpp"

#include <vector>

namespace {
constexpr int exitBadArguments = 2;
}  // namespace

int main(int argc, char* argv[]) {
    shell::prepareProcess("tarnwick-settings");
    shell::beginTranslations();
    settings::SettingsOptions options;
    const std::vector<shell::Option> known = settings::settingsOptions(options);
    const std::vector<const char*> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (const auto error = shell::readOptions(known, arguments)) {
        shell::complainOfMisuse(*error);
        return exitBadArguments;
    }
    if (const auto status =
            shell::answerQuestions(options.common, "tarnwick-settings [OPTION ...]", known))
        return *status;
    shell::applyOptions(options.common);
    shell::installBackends();
    return settings::SettingsApplication(options).run();
}
