#include "shells/desktop/OpenSettings.hpp"

#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/Installation.hpp"
#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"

#include <gio/gio.h>

#include <memory>
#include <string>
#include <string_view>

namespace desktop {
namespace {

constexpr const char* settingsProgram = "tarnwick-settings";

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
struct Free {
    void operator()(gpointer memory) const { g_free(memory); }
};
using Text = std::unique_ptr<char, Free>;
using Context = std::unique_ptr<GAppLaunchContext, Unref>;

/// Beside this program, as in a build tree, else where the user's shell finds it; empty if nowhere.
std::string settingsProgramFile() {
    const std::string beside = shell::programDirectory() + "/" + settingsProgram;
    if (g_file_test(beside.c_str(), G_FILE_TEST_IS_EXECUTABLE) != FALSE) return beside;
    const Text found(g_find_program_in_path(settingsProgram));
    return found ? found.get() : "";
}

/// As a word of a command line in which "%" begins a code.
std::string quoted(const std::string& word) {
    const Text text(g_shell_quote(word.c_str()));
    std::string command;
    for (const char letter : std::string_view(text.get()))
        command += letter == '%' ? std::string("%%") : std::string(1, letter);
    return command;
}

Context launchContext(GdkDisplay* display) {
    Context context(display ? G_APP_LAUNCH_CONTEXT(gdk_display_get_app_launch_context(display))
                            : g_app_launch_context_new());
    // The mixer draws nothing with GL; the settings or a file manager may.
    g_app_launch_context_unsetenv(context.get(), "GDK_GL");
    return context;
}

shell::Problem problemOf(gboolean done, GError* error) {
    if (done != FALSE) return std::nullopt;
    std::string reason = error ? error->message : "";
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_NOT_SUPPORTED) != FALSE)
        // TRANSLATORS: Why the settings cannot be opened.
        reason = shell::translated("neither tarnwick-settings nor a file manager is installed");
    g_clear_error(&error);
    return reason;
}

shell::Problem startProgram(const std::string& file, const shell::CommonOptions& options,
                            GAppLaunchContext* context) {
    std::string command = quoted(file);
    if (options.preferences) command += " --preferences " + quoted(*options.preferences);
    if (options.model) command += " --model " + quoted(*options.model);
    GError* error = nullptr;
    const std::unique_ptr<GAppInfo, Unref> program(g_app_info_create_from_commandline(
        command.c_str(), nullptr, G_APP_INFO_CREATE_SUPPORTS_STARTUP_NOTIFICATION, &error));
    const gboolean started =
        program ? g_app_info_launch(program.get(), nullptr, context, &error) : FALSE;
    return problemOf(started, error);
}

shell::Problem openFolder(GAppLaunchContext* context) {
    constexpr int ownerOnly = 0700;
    const std::string folder = preferencesDirectory();
    g_mkdir_with_parents(folder.c_str(), ownerOnly);
    GError* error = nullptr;
    const Text address(g_filename_to_uri(folder.c_str(), nullptr, &error));
    const gboolean opened =
        address ? g_app_info_launch_default_for_uri(address.get(), context, &error) : FALSE;
    return problemOf(opened, error);
}

}  // namespace

shell::Problem openSettings(const shell::CommonOptions& options, GdkDisplay* display) {
    const Context context = launchContext(display);
    const std::string program = settingsProgramFile();
    const shell::Problem problem =
        program.empty() ? openFolder(context.get()) : startProgram(program, options, context.get());
    if (problem)
        shell::complain(shell::filled(shell::translated("the settings cannot be opened: {reason}"),
                                      {{"reason", *problem}}));
    return problem;
}

}  // namespace desktop
