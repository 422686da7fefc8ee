#include "tests/desktop/Program.hpp"

#include <fcntl.h>
#include <gio/gio.h>
#include <unistd.h>

#include <csignal>
#include <memory>

namespace test {
namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

std::string taken(char* text) {
    std::string result = text ? text : "";
    g_free(text);
    return result;
}

using Launcher = std::unique_ptr<GSubprocessLauncher, Unref>;

Launcher newLauncher(Complaints complaints) {
    const bool read = complaints == Complaints::Read;
    const int pipes =
        G_SUBPROCESS_FLAGS_STDOUT_PIPE | (read ? int{G_SUBPROCESS_FLAGS_STDERR_PIPE} : 0);
    Launcher launcher(g_subprocess_launcher_new(static_cast<GSubprocessFlags>(pipes)));
    // As in a terminal, whatever this test was started from.
    const auto brokenPipesKill = +[](gpointer) { std::signal(SIGPIPE, SIG_DFL); };
    g_subprocess_launcher_set_child_setup(launcher.get(), brokenPipesKill, nullptr, nullptr);
    int ends[2];
    if (!read && pipe2(ends, O_CLOEXEC) == 0) {
        close(ends[0]);
        g_subprocess_launcher_take_stderr_fd(launcher.get(), ends[1]);
    }
    return launcher;
}

using Process = std::unique_ptr<GSubprocess, Unref>;

Process start(const Launcher& launcher, const std::vector<std::string>& arguments,
              const std::map<std::string, std::string>& environment) {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        g_subprocess_launcher_unsetenv(launcher.get(), name);
    g_subprocess_launcher_setenv(launcher.get(), "PULSE_SERVER", "unix:/nowhere", TRUE);
    for (const auto& [name, value] : environment)
        g_subprocess_launcher_setenv(launcher.get(), name.c_str(), value.c_str(), TRUE);

    std::vector<const char*> words = {TARNWICK_PROGRAM};
    for (const std::string& argument : arguments)
        words.push_back(argument.c_str());
    words.push_back(nullptr);
    return Process(g_subprocess_launcher_spawnv(launcher.get(), words.data(), nullptr));
}

Ended waitForEnd(const Process& process) {
    char* output = nullptr;
    char* complaints = nullptr;
    g_subprocess_communicate_utf8(process.get(), nullptr, nullptr, &output, &complaints, nullptr);
    const bool exited = g_subprocess_get_if_exited(process.get()) != FALSE;
    return {exited ? g_subprocess_get_exit_status(process.get()) : -1, taken(output),
            taken(complaints)};
}

/// Byte by byte: what comes after it is read by others.
std::string readLine(GInputStream* stream) {
    std::string line;
    char character = 0;
    while (g_input_stream_read(stream, &character, 1, nullptr, nullptr) == 1) {
        line += character;
        if (character == '\n') break;
    }
    return line;
}

}  // namespace

Ended runProgram(const std::vector<std::string>& arguments,
                 const std::map<std::string, std::string>& environment, Complaints complaintsRead) {
    const Process process = start(newLauncher(complaintsRead), arguments, environment);
    return process ? waitForEnd(process) : Ended{};
}

Ended runProgramUntilSignal(const std::vector<std::string>& arguments,
                            const std::map<std::string, std::string>& environment, int signal) {
    const Process process = start(newLauncher(Complaints::Read), arguments, environment);
    if (!process) return {};
    GInputStream* complaints = g_subprocess_get_stderr_pipe(process.get());
    std::string before;
    for (std::string line = "?"; !line.empty() && line.find("preferredViewSize") == line.npos;)
        before += line = readLine(complaints);
    g_subprocess_send_signal(process.get(), signal);
    Ended ended = waitForEnd(process);
    ended.complaints = before + ended.complaints;
    return ended;
}

}  // namespace test
