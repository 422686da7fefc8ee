#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/desktop/DesktopApplication.hpp"

#if __has_include(<malloc.h>)
#include <malloc.h>
#endif

#include <vector>

namespace {

constexpr int exitBadArguments = 2;

/// The libraries' threads are few and allocate little: a heap for each would be mostly unused
/// memory.
void shareHeaps() {
#ifdef M_ARENA_MAX
    mallopt(M_ARENA_MAX, 2);
#endif
}

}  // namespace

int main(int argc, char* argv[]) {
    shareHeaps();
    shell::prepareProcess("tarnwick");
    shell::beginTranslations();
    desktop::DesktopOptions options;
    const std::vector<shell::Option> known = desktop::desktopOptions(options);
    const std::vector<const char*> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (const auto error = shell::readOptions(known, arguments)) {
        shell::complainOfMisuse(*error);
        return exitBadArguments;
    }
    if (const auto status = shell::answerQuestions(options.common, "tarnwick [OPTION ...]", known))
        return *status;
    shell::applyOptions(options.common);
    shell::installBackends();
    return desktop::DesktopApplication(options).run();
}
