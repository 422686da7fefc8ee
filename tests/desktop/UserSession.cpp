#include "tests/desktop/UserSession.hpp"

#include "shells/common/Installation.hpp"
#include "tests/rigs/UnixSocket.hpp"
#include "tests/rigs/Waiting.hpp"

#include <csignal>
#include <stdexcept>

namespace test {

UserSession::UserSession(Bus bus, Accessibility accessibility)
    : bus_(bus), accessibility_(accessibility) {
    folder.writeOutputs("declined");
    if (bus == Bus::None) return;
    const std::string socket = folder.path() / "bus";
    daemon_ = ChildProcess(
        {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=unix:path=" + socket},
        {.environment = environment(), .log = folder.log()});
    if (!rigs::waitUntil([&] { return rigs::takesConnections(socket); }))
        throw std::runtime_error("no session bus: " + logged());
}

void UserSession::endBus() {
    daemon_.signal(SIGTERM);
    daemon_.wait();
}

Environment UserSession::environment() const {
    Environment all = folder.environment();
    all["DISPLAY"] = server.displayName();
    all["GDK_BACKEND"] = "x11";
    all["WAYLAND_DISPLAY"] = "";
    all["PULSE_SERVER"] = sound.address();
    all["XDG_CACHE_HOME"] = folder.path() / "cache";
    if (accessibility_ == Accessibility::None)
        all["NO_AT_BRIDGE"] = "1";
    else
        all.insert({{"NO_AT_BRIDGE", ""}, {"GSETTINGS_BACKEND", "memory"}});
    all["LC_ALL"] = "C.UTF-8";
    if (bus_ == Bus::Here)
        all["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + (folder.path() / "bus").string();
    return all;
}

ChildProcess UserSession::startMixer(std::vector<std::string> arguments) const {
    std::vector<std::string> words = {TARNWICK_PROGRAM, "--model", "iPad4,1"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return ChildProcess(words, {.environment = environment(), .log = folder.log()});
}

int UserSession::runMixer(std::vector<std::string> arguments) const {
    return startMixer(std::move(arguments)).wait();
}

CGRect UserSession::waitForWindow() const {
    rigs::waitUntil([this] { return !screen.windowsOf(shell::applicationId).empty(); });
    const std::vector<CGRect> windows = screen.windowsOf(shell::applicationId);
    return windows.empty() ? CGRect{} : windows.front();
}

bool UserSession::waitForNoWindow() const {
    return rigs::waitUntil([this] { return screen.windowsOf(shell::applicationId).empty(); });
}

}  // namespace test
