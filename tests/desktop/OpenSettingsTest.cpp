#include "tests/desktop/UserSession.hpp"
#include "tests/rigs/Waiting.hpp"

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace test {
namespace {

/// The mixer in a session, installed without the settings program beside it.
class OpenSettingsTest : public testing::Test {
 protected:
    OpenSettingsTest() {
        std::filesystem::create_directories(programs);
        std::filesystem::create_directories(preferences);
        std::filesystem::copy_file(mixerFile, programs / "tarnwick");
        std::filesystem::create_directory_symlink(mixerFile.parent_path().parent_path() / "lib",
                                                  root / "lib");
    }

    /// A program of that name that writes down how it was started.
    void installSettings() const {
        const std::filesystem::path program = programs / "tarnwick-settings";
        std::ofstream(program) << "#!/bin/sh\n"
                                  "{ echo \"GDK_GL=${GDK_GL-unset}\"; printf '%s\\n' \"$@\"; } > "
                               << started << ".part\n/bin/mv " << started << ".part " << started
                               << '\n';
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }
    void start() {
        Environment environment = session.environment();
        environment["XDG_DATA_DIRS"] = root / "no-programs";
        environment["PATH"] = programs;
        mixer = ChildProcess(
            {programs / "tarnwick", "--model", "iPad4,1", "--preferences", preferences},
            {.environment = environment, .log = session.folder.log()});
        ASSERT_TRUE(waitForHeight(rows + noticeOf(1))) << session.logged();
    }
    bool waitForHeight(double height) const {
        return rigs::waitUntil([&] { return session.waitForWindow().size.height == height; });
    }
    void pressGear() {
        const CGRect window = session.waitForWindow();
        session.user.moveTo(window.origin.x + 12, window.origin.y + 12);
        session.user.click();
    }
    /// What the settings were started with, once they have been.
    std::string takeStarted() const {
        rigs::waitUntil([&] { return std::filesystem::exists(started); });
        std::stringstream text;
        text << std::ifstream(started).rdbuf();
        std::filesystem::remove(started);
        return text.str();
    }

    // Points. One line says that no sound server answers, another what this is about.
    static constexpr double rows = 20 + 5 * 50;
    static double noticeOf(int lines) { return lines * 14 + 8 + 36 + 14; }

    UserSession session;
    std::filesystem::path mixerFile = TARNWICK_PROGRAM;
    std::filesystem::path root = session.folder.path() / "installed";
    std::filesystem::path programs = root / "bin";
    std::filesystem::path preferences = session.folder.path() / "100%f %% 'mine'";
    std::filesystem::path started = session.folder.path() / "started";
    ChildProcess mixer;
};

TEST_F(OpenSettingsTest, GearAndCtrlCommaStartThemForTheFolderAndWithoutTheMixersVariables) {
    installSettings();
    start();
    const std::string expected =
        "GDK_GL=unset\n--preferences\n" + preferences.string() + "\n--model\niPad4,1\n";
    pressGear();
    EXPECT_EQ(takeStarted(), expected) << session.logged();
    session.user.pressKey(XK_Control_L);
    session.user.typeKey(XK_comma);
    session.user.releaseKey(XK_Control_L);
    EXPECT_EQ(takeStarted(), expected) << session.logged();
}

TEST_F(OpenSettingsTest, PanelSaysWhyTheyCannotBeOpened) {
    start();
    pressGear();
    EXPECT_TRUE(waitForHeight(rows + noticeOf(1 + 2)));
    const std::string complaint =
        "tarnwick: the settings cannot be opened: neither "
        "tarnwick-settings nor a file manager is installed\n";
    EXPECT_NE(session.logged().find(complaint), std::string::npos) << session.logged();
    installSettings();
    pressGear();
    EXPECT_NE(takeStarted(), "");
    EXPECT_TRUE(waitForHeight(rows + noticeOf(1))) << "it no longer holds";
}

}  // namespace
}  // namespace test
