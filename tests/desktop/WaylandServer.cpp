#include "tests/desktop/WaylandServer.hpp"

#include "tests/rigs/UnixSocket.hpp"
#include "tests/rigs/Waiting.hpp"

#include <fcntl.h>
#include <glib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace test {
namespace {

constexpr const char* socketName = "wayland-test";

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
    running_ = rigs::waitUntil([this] { return rigs::takesConnections(folder_ / socketName); });
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
