#include "tests/desktop/WaylandServer.hpp"

#include "tests/desktop/MainLoop.hpp"

#include <fcntl.h>
#include <gio/gio.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <memory>

namespace test {
namespace {

constexpr const char* socketName = "wayland-test";

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

[[noreturn]] void becomeServer() {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    const std::string socket = std::string("--socket=") + socketName;
    execlp("weston", "weston", "--backend=headless-backend.so", "--no-config", "--idle-time=0",
           "--width=1280", "--height=900", socket.c_str(), static_cast<char*>(nullptr));
    _exit(127);
}

bool takesConnections(const std::filesystem::path& socketFile) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    socketFile.string().copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool taken =
        connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(connection);
    return taken;
}

/// The compositor says that it is nearly ready by making its socket; it takes connections an
/// instant later.
bool waitForServer(const std::filesystem::path& socketFile) {
    const std::unique_ptr<GFile, Unref> folder(
        g_file_new_for_path(socketFile.parent_path().c_str()));
    const std::unique_ptr<GFileMonitor, Unref> monitor(
        g_file_monitor_directory(folder.get(), G_FILE_MONITOR_NONE, nullptr, nullptr));
    if (!waitUntil([&] { return std::filesystem::exists(socketFile); })) return false;
    const gint64 deadline = g_get_monotonic_time() + 5 * G_USEC_PER_SEC;
    while (!takesConnections(socketFile))
        if (g_get_monotonic_time() > deadline) return false;
    return true;
}

}  // namespace

WaylandServer::WaylandServer() {
    std::string name = (std::filesystem::temp_directory_path() / "wayland-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) return;
    folder_ = name;
    g_setenv("XDG_RUNTIME_DIR", name.c_str(), TRUE);
    g_setenv("WAYLAND_DISPLAY", socketName, TRUE);
    g_setenv("GDK_BACKEND", "wayland", TRUE);
    g_unsetenv("DISPLAY");
    process_ = fork();
    if (process_ == 0) becomeServer();
    running_ = waitForServer(folder_ / socketName);
}

WaylandServer::~WaylandServer() {
    if (process_ > 0) {
        kill(process_, SIGTERM);
        waitpid(process_, nullptr, 0);
    }
    std::error_code ignored;
    if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
}

}  // namespace test
