#include "tests/desktop/WaylandServer.hpp"

#include "tests/rigs/UnixSocket.hpp"
#include "tests/rigs/Waiting.hpp"

#include <glib.h>

#include <csignal>

namespace test {
namespace {

constexpr const char* socketName = "wayland-test";

}  // namespace

WaylandServer::WaylandServer() {
    std::string name = (std::filesystem::temp_directory_path() / "wayland-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) return;
    folder_ = name;
    g_setenv("XDG_RUNTIME_DIR", name.c_str(), TRUE);
    g_setenv("WAYLAND_DISPLAY", socketName, TRUE);
    g_setenv("GDK_BACKEND", "wayland", TRUE);
    g_unsetenv("DISPLAY");
    process_ =
        ChildProcess({"weston", "--backend=headless-backend.so", "--no-config", "--idle-time=0",
                      "--width=1280", "--height=900", std::string("--socket=") + socketName});
    running_ = rigs::waitUntil([this] { return rigs::takesConnections(folder_ / socketName); });
}

WaylandServer::~WaylandServer() {
    process_.signal(SIGTERM);
    process_.wait();
    std::error_code ignored;
    if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
}

}  // namespace test
