#include "tests/settings/program/SettingsProgram.hpp"

#include "tests/rigs/Waiting.hpp"

#include <X11/keysym.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace test {
namespace {

constexpr unsigned roleListItem = 32;

/// What all tests of the program have around them: a home, and a bus that keeps the socket of the
/// accessibility service there.
struct Surroundings {
    rigs::ServerFolder folder;
    SessionBus bus;
};
Surroundings& surroundings() {
    static Surroundings all;
    return all;
}

/// GTK 4.8 tells the name of a button with a mnemonic as "_Undo Undo".
bool isNamed(std::string told, const std::string& name) {
    std::erase(told, '_');
    return told == name || told == name + " " + name;
}

/// The result of looking through the window, anew while objects go meanwhile.
auto lookedThrough(const auto& look) {
    constexpr int mostTries = 20;
    for (int i = 0;; ++i) {
        try {
            return look();
        } catch (const std::runtime_error&) {
            if (i == mostTries) throw;
        }
        rigs::runFor(0.01);
    }
}

unsigned long keyFor(char character) {
    return character == ' ' ? XK_space : static_cast<unsigned char>(character);
}

}  // namespace

SettingsProgram::SettingsProgram() : folder(surroundings().folder) {}

SettingsProgram::~SettingsProgram() {
    if (HasFailure()) {
        std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
        std::ranges::replace(test, '/', '-');
        screen.picture().keep("settings-failed-" + test);
        ADD_FAILURE() << folder.logged();
    }
    program.signal(SIGTERM);
    program.wait();
    EXPECT_EQ(folder.logged().find("CRITICAL"), std::string::npos) << folder.logged();
}

void SettingsProgram::start(std::vector<std::string> arguments, const Environment& environment) {
    const std::string fileLimit = disk == Disk::Full ? "0" : "unlimited";
    // A write beyond the limit fails rather than ends it.
    std::vector<std::string> words = {
        "sh", "-c", "trap '' XFSZ; ulimit -f \"$1\"; shift; exec \"$@\"", "sh", fileLimit};
    words.insert(words.end(), command.begin(), command.end());
    for (const char* word : {"--model", "iPhone6,1", "--preferences", files.folder().c_str()})
        words.emplace_back(word);
    words.insert(words.end(), arguments.begin(), arguments.end());
    Environment all = folder.environment();
    const Environment own = {{"DISPLAY", server.displayName()},
                             {"DBUS_SESSION_BUS_ADDRESS", g_getenv("DBUS_SESSION_BUS_ADDRESS")},
                             {"GDK_BACKEND", "x11"},
                             {"GSETTINGS_BACKEND", "memory"},
                             {"GSK_RENDERER", "cairo"},
                             {"LC_ALL", "C.UTF-8"},
                             {"NO_AT_BRIDGE", ""},
                             {"WAYLAND_DISPLAY", ""},
                             {"XDG_CACHE_HOME", folder.path() / "cache"},
                             {"XDG_CONFIG_HOME", files.folder() / "config"},
                             {"XDG_STATE_HOME", files.folder() / "state"}};
    for (const Environment& some : {own, environment})
        for (const auto& [name, value] : some)
            all[name] = value;
    program = ChildProcess(words, {.environment = all, .log = folder.log()});
    const bool isOnScreen = all.at("GDK_BACKEND") != "x11" || rigs::waitUntil([this] {
                                return !screen.windowsOf(settingsClass).empty();
                            });
    ASSERT_TRUE(isOnScreen) << folder.logged();
    ASSERT_FALSE(window().program.empty()) << folder.logged();
}

void SettingsProgram::resize(const CGSize& wanted) {
    constexpr CGFloat frame = 16;  // At most, both sides together.
    screen.resize(settingsClass, wanted);
    EXPECT_TRUE(rigs::waitUntil([&] {
        const CGSize now = size();
        return std::abs(now.width - wanted.width) <= frame &&
               std::abs(now.height - wanted.height) <= frame;
    })) << size().width
        << " x " << size().height;
}

SettingsProgram::Object SettingsProgram::window() {
    const Object root = reader.waitForProgram(settingsClass);
    if (root.program.empty()) return {};
    const std::vector<Object> windows = reader.children(root);
    return windows.empty() ? Object{} : windows.front();
}

void SettingsProgram::collect(const Object& object, std::vector<Object>& found) {
    found.push_back(object);
    for (const Object& child : reader.children(object)) {
        // What has no size is on another page.
        const CGRect place = reader.extents(child);
        if (place.size.width > 0 && place.size.height > 0) collect(child, found);
    }
}

std::vector<SettingsProgram::Object> SettingsProgram::shown() {
    std::vector<Object> found;
    for (const Object& each : reader.children(reader.waitForProgram(settingsClass)))
        collect(each, found);
    return found;
}

SettingsProgram::Object SettingsProgram::find(const std::string& name) {
    Object sought;
    const auto look = [&] {
        for (const Object& each : shown())
            if (isNamed(reader.name(each), name) &&
                reader.hasState(each, AtSpiClient::stateFocusable) &&
                reader.role(each) != roleListItem) {
                sought = each;
                return true;
            }
        return false;
    };
    rigs::waitUntil([&] { return lookedThrough(look); });
    if (sought.program.empty()) throw std::runtime_error("nothing is named " + name);
    return sought;
}

bool SettingsProgram::shows(const std::string& name) {
    return lookedThrough([&] {
        for (const Object& each : shown())
            if (reader.name(each) == name) return true;
        return false;
    });
}

bool SettingsProgram::waitToShow(const std::string& name) {
    return rigs::waitUntil([&] { return shows(name); });
}

void SettingsProgram::clickOnRow(const std::string& title) {
    CGPoint place;
    const auto look = [&] {
        for (const Object& each : shown())
            if (reader.role(each) == roleListItem && reader.name(each) == title) {
                place = middleOf(each);
                return true;
            }
        return false;
    };
    ASSERT_TRUE(rigs::waitUntil([&] { return lookedThrough(look); })) << title;
    user.moveTo(place.x, place.y);
    user.click();
}

void SettingsProgram::press(const std::string& name) {
    EXPECT_TRUE(reader.act(find(name))) << name;
}

bool SettingsProgram::isOn(const std::string& name) {
    constexpr unsigned stateChecked = 4;
    constexpr unsigned statePressed = 20;
    const Object object = find(name);
    return reader.hasState(object, stateChecked) || reader.hasState(object, statePressed);
}

CGPoint SettingsProgram::middleOf(const Object& object) {
    const CGRect onScreen = screen.windowsOf(settingsClass).front();
    const CGRect inWindow = reader.extents(window());
    const CGRect place = reader.extents(object);
    // The window's frame is outside of what its objects are placed in.
    const CGFloat frame = (onScreen.size.width - inWindow.size.width) / 2;
    return {onScreen.origin.x + frame + CGRectGetMidX(place),
            onScreen.origin.y + frame + CGRectGetMidY(place)};
}

void SettingsProgram::clickOn(const std::string& name) {
    const CGPoint place = middleOf(find(name));
    user.moveTo(place.x, place.y);
    user.click();
}

void SettingsProgram::type(const std::string& text) {
    for (const char character : text)
        user.typeKey(keyFor(character));
}

void SettingsProgram::typeWith(unsigned long modifier, unsigned long key) {
    user.pressKey(modifier);
    user.typeKey(key);
    user.releaseKey(modifier);
}

std::string SettingsProgram::contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool SettingsProgram::waitForCategories(const std::string& bytes) {
    return rigs::waitUntil([&] { return contentsOf(files.categoryFile()) == bytes; });
}

bool SettingsProgram::waitForSettings(const std::string& bytes) {
    return rigs::waitUntil([&] { return contentsOf(files.settingsFile()) == bytes; });
}

}  // namespace test
