#include "tests/phosh/PhoneShell.hpp"

#include "tests/processes/RunningProgram.hpp"
#include "tests/rigs/Waiting.hpp"

#include <csignal>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace test {
namespace {

constexpr const char* program = "/usr/libexec/phosh";

/// A folder with both plugins, told of as a cache of what modules bring; from it the libraries are
/// where they are in an installation.
void writePlugins(const rigs::ServerFolder& folder, PhoneShell::Pages pages) {
    const std::filesystem::path plugins = folder.path() / TEST_PLUGIN_FOLDER;
    std::filesystem::create_directories(plugins);
    const std::filesystem::path libraries = folder.path() / TEST_LIBRARY_FOLDER;
    std::filesystem::create_directories(libraries.parent_path());
    std::filesystem::create_directory_symlink(TEST_LIBRARIES, libraries);
    std::string cache;
    for (const std::filesystem::path plugin : {TEST_PHOSH_PLUGIN, TEST_PHOSH_HAND}) {
        std::filesystem::create_symlink(plugin, plugins / plugin.filename());
        cache += plugin.filename().string() + ": phosh-lockscreen-widget\n";
    }
    folder.write(TEST_PLUGIN_FOLDER "/giomodule.cache", cache);
    folder.write("config/glib-2.0/settings/keyfile",
                 std::string("[sm/puri/phosh/plugins]\nlock-screen=") +
                     (pages == PhoneShell::Pages::Mixer ? "['tarnwick']" : "['tarnwick','empty']") +
                     "\n");
}

}  // namespace

PhoneShell::PhoneShell(HeadlessPhoc& compositor, const Environment& variables, Pages pages)
    : compositor_(compositor), bus_(compositor.folder()) {
    const rigs::ServerFolder& folder = compositor.folder();
    writePlugins(folder, pages);
    variables_ = compositor.environment();
    variables_["DBUS_SESSION_BUS_ADDRESS"] = bus_.address();
    variables_["GIO_EXTRA_MODULES"] = (folder.path() / TEST_PLUGIN_FOLDER).string();
    variables_["NO_AT_BRIDGE"] = "1";
    variables_["LC_ALL"] = "C.UTF-8";
    // The plugin's run-time checks must come before the shell's first allocation.
    variables_["LD_PRELOAD"] = TEST_SANITIZERS;
    variables_["ASAN_OPTIONS"] = "detect_leaks=0";
    for (const auto& [name, value] : variables)
        variables_[name] = value;
    process_ =
        ChildProcess({program, "--locked"}, {.environment = variables_, .log = folder.log()});
    const auto isUp = [&] {
        return isLocked() || folder.logged().find("Phosh ready") != std::string::npos;
    };
    if (!rigs::waitUntil([&] { return !isRunning() || isUp(); }) || !isRunning())
        throw std::runtime_error("the shell is not locked: " + folder.logged());
    activeIsBlank_ = !isLocked();
}

PhoneShell::~PhoneShell() {
    process_.signal(SIGTERM);
    process_.wait();
}

bool PhoneShell::isRunning() {
    return !process_.hasEnded();
}

std::string PhoneShell::call(const std::string& method,
                             const std::vector<std::string>& arguments) const {
    Environment variables = variables_;
    variables["LD_PRELOAD"] = "";
    std::vector<std::string> words = {"gdbus",
                                      "call",
                                      "--session",
                                      "--dest",
                                      "org.gnome.ScreenSaver",
                                      "--object-path",
                                      "/org/gnome/ScreenSaver",
                                      "--method",
                                      "org.gnome.ScreenSaver." + method};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return outputOf(words, variables);
}

bool PhoneShell::isLocked() const {
    try {
        return call("GetActive") == "(true,)\n";
    } catch (const std::runtime_error&) {
        return false;  // It has not come so far yet.
    }
}

void PhoneShell::lock() {
    call("Lock");
    if (!rigs::waitUntil([this] { return isLocked(); }))
        throw std::runtime_error("the shell does not lock: " + compositor_.folder().logged());
    if (!activeIsBlank_) return;
    call("SetActive", {"false"});
    if (!rigs::waitUntil([this] { return !isLocked(); }))
        throw std::runtime_error("the screen stays blank: " + compositor_.folder().logged());
}

void PhoneShell::unlock() {
    process_.signal(SIGUSR2);
    if (!rigs::waitUntil([this] { return !isLocked(); }))
        throw std::runtime_error("the shell does not unlock: " + compositor_.folder().logged());
}

/// A lock screen that has just come takes no fingers yet, and a newer shell folds its settings away
/// above it: two fingers on their slider would move the volume.
void PhoneShell::swipeToWidgets() {
    constexpr double patienceSeconds = 2;
    if (!rigs::waitUntil([this] { return showsClock(); }))
        throw std::runtime_error("no lock screen comes: " + compositor_.folder().logged());
    constexpr int attempts = 10;
    for (int i = 0; i < attempts; ++i) {
        compositor_.moveTo(180, 60);
        compositor_.swipe(-15, 0, 20);
        compositor_.moveTo(compositor_.width() - 1, compositor_.height() - 1);
        if (rigs::waitUntil([this] { return showsWidgets(); }, patienceSeconds)) return;
    }
    throw std::runtime_error("the page does not come: " + compositor_.folder().logged());
}

/// Has something in its upper half, the clock, and nothing moves there: only the arrow below does.
bool PhoneShell::showsClock() const {
    constexpr double stillSeconds = 0.1;
    const Screenshot before = compositor_.screenshot();
    rigs::runFor(stillSeconds);
    const Screenshot after = compositor_.screenshot();
    bool isEmpty = true;
    for (int y = 0; y < before.height() / 2; ++y)
        for (int x = 0; x < before.width(); ++x) {
            if (before.at(x, y) != after.at(x, y)) return false;
            isEmpty = isEmpty && before.at(x, y) == 0;
        }
    return !isEmpty;
}

/// Has the button that leads back to the clock, in its place, and stands still: the clock's page
/// never does.
bool PhoneShell::showsWidgets() const {
    constexpr int buttonX = 48;  // Pixels, beside the arrow on it.
    constexpr int buttonY = 128;
    constexpr double stillSeconds = 0.1;
    const Screenshot before = compositor_.screenshot();
    if (before.at(buttonX, buttonY) == 0) return false;
    rigs::runFor(stillSeconds);
    return compositor_.screenshot() == before;
}

std::size_t PhoneShell::descriptors() const {
    const std::filesystem::directory_iterator open("/proc/" + std::to_string(process_.id()) +
                                                   "/fd");
    return static_cast<std::size_t>(std::distance(begin(open), end(open)));
}

std::size_t PhoneShell::memory() const {
    std::ifstream file("/proc/" + std::to_string(process_.id()) + "/smaps_rollup");
    std::size_t kilobytes = 0;
    for (std::string word; file >> word;) {
        std::size_t value = 0;
        if (word == "Private_Dirty:" && file >> value) kilobytes += value;
    }
    return kilobytes;
}

}  // namespace test
