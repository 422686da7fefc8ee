#pragma once

#include "tests/desktop/AtSpiClient.hpp"
#include "tests/desktop/XScreen.hpp"
#include "tests/desktop/XServer.hpp"
#include "tests/processes/ChildProcess.hpp"
#include "tests/rigs/ServerFolder.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace test {

/// The settings program in a session of its own: driven by its names as a screen reader tells them,
/// by keys and by the mouse. Files are a test's own.
class SettingsProgram : public testing::Test {
 protected:
    using Object = AtSpiClient::Object;
    /// Of the program's windows, and the program's name for a screen reader.
    static constexpr const char* settingsClass = "org.tarnwick.Settings";

    SettingsProgram();
    ~SettingsProgram() override;

    /// Starts it and waits for its window.
    void start(std::vector<std::string> arguments = {}, const Environment& environment = {});

    /// Gives the window another size, its frame included, and waits until it has it.
    void resize(const CGSize& size);
    /// The window's size without its frame.
    CGSize size() { return reader.extents(window()).size; }

    /// Waits for the first control on the screen of that name, in the order of the window. The item
    /// of a list around a control has its name, too.
    Object find(const std::string& name);
    /// Whether something of that name is on the screen, as a label too.
    bool shows(const std::string& name);
    bool waitToShow(const std::string& name);
    void press(const std::string& name);
    /// On a row that is a button as a whole, and in sight.
    void clickOnRow(const std::string& title);
    bool isOn(const std::string& name);
    void clickOn(const std::string& name);
    /// The middle of an object, in pixels of the screen.
    CGPoint middleOf(const Object& object);
    /// Letters and digits as keys.
    void type(const std::string& text);
    void typeWith(unsigned long modifier, unsigned long key);
    /// Every object of the window that is on the screen.
    std::vector<Object> shown();

    bool waitForCategories(const std::string& bytes);
    bool waitForSettings(const std::string& bytes);
    static std::string contentsOf(const std::filesystem::path& file);

    /// What starts it, before the arguments.
    std::vector<std::string> command{TARNWICK_SETTINGS_PROGRAM};
    /// Full: the program can write no byte into any file.
    enum class Disk { Room, Full };
    Disk disk = Disk::Room;
    MixerFiles files;
    rigs::ServerFolder& folder;  ///< Of all tests of the program.
    XServer server;
    XUser user{server.displayName()};
    XScreen screen{server.displayName()};
    AtSpiClient reader;
    ChildProcess program;

 private:
    void collect(const Object& object, std::vector<Object>& found);
    Object window();
};

}  // namespace test
