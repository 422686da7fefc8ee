#include "tests/wayland/HeadlessPhoc.hpp"

#include "tests/processes/RunningProgram.hpp"
#include "tests/rigs/UnixSocket.hpp"
#include "tests/rigs/Waiting.hpp"

#include <csignal>
#include <stdexcept>

namespace test {
namespace {

// What the compositor calls its first socket; the folder is its own.
constexpr const char* socketName = "wayland-0";

std::string configuration(const HeadlessPhoc::Screen& screen) {
    return "[core]\nxwayland=false\n[output:HEADLESS-1]\nmode = " + std::to_string(screen.width) +
           "x" + std::to_string(screen.height) + "\nscale = " + std::to_string(screen.scale) + "\n";
}

}  // namespace

HeadlessPhoc::HeadlessPhoc(rigs::ServerFolder& folder, const Screen& screen)
    : folder_(folder), screen_(screen) {
    folder.write("phoc.ini", configuration(screen));
    Environment variables = folder.environment();
    variables["WAYLAND_DISPLAY"] = "";
    variables["WLR_BACKENDS"] = "headless";
    variables["WLR_RENDERER"] = "pixman";
    variables["WLR_LIBINPUT_NO_DEVICES"] = "1";
    variables["GSETTINGS_BACKEND"] = "memory";
    compositor_ = ChildProcess({"phoc", "-C", (folder.path() / "phoc.ini").string()},
                               {.environment = variables, .log = folder.log()});
    const bool began = rigs::waitUntil([this] {
        return compositor_.hasEnded() || rigs::takesConnections(folder_.path() / socketName);
    });
    if (!began || !compositor_) throw std::runtime_error("no compositor: " + folder.logged());
    pointer_ = std::make_unique<rigs::Conversation>(std::vector<std::string>{TEST_VIRTUAL_POINTER},
                                                    environment());
}

HeadlessPhoc::~HeadlessPhoc() {
    pointer_.reset();
    compositor_.signal(SIGTERM);
    compositor_.wait();
}

Environment HeadlessPhoc::environment() const {
    Environment variables = folder_.environment();
    variables["WAYLAND_DISPLAY"] = socketName;
    variables["GDK_BACKEND"] = "wayland";
    variables["GSETTINGS_BACKEND"] = "keyfile";
    return variables;
}

void HeadlessPhoc::moveTo(int x, int y) {
    pointer_->ask("move " + std::to_string(x) + " " + std::to_string(y) + " " +
                  std::to_string(width()) + " " + std::to_string(height()));
}

void HeadlessPhoc::press() {
    pointer_->ask("press");
}

void HeadlessPhoc::release() {
    pointer_->ask("release");
}

void HeadlessPhoc::click(int x, int y) {
    drag(x, y, x, y, 0);
}

void HeadlessPhoc::drag(int fromX, int fromY, int toX, int toY, int steps) {
    constexpr double frameSeconds = 0.02;  // Programs make one movement of those in one frame.
    moveTo(fromX, fromY);
    press();
    for (int i = 1; i <= steps; ++i) {
        rigs::runFor(frameSeconds);
        moveTo(fromX + (toX - fromX) * i / steps, fromY + (toY - fromY) * i / steps);
    }
    release();
}

void HeadlessPhoc::swipe(double dx, double dy, int steps) {
    pointer_->ask("swipe " + std::to_string(dx) + " " + std::to_string(dy) + " " +
                  std::to_string(steps));
}

Screenshot HeadlessPhoc::screenshot() const {
    return Screenshot(outputOf({"grim", "-t", "ppm", "-"}, environment()));
}

void HeadlessPhoc::saveScreenshot(const std::filesystem::path& file) const {
    std::filesystem::create_directories(file.parent_path());
    outputOf({"grim", file.string()}, environment());
}

}  // namespace test
