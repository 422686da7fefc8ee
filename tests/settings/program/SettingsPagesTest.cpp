#include "tests/desktop/WaylandServer.hpp"
#include "tests/rigs/Waiting.hpp"
#include "tests/settings/program/SettingsProgram.hpp"

#include <filesystem>

namespace test {
namespace {

std::string settingsOf(const std::string& entries) {
    return "<plist version=\"1.0\">\n<dict>\n  <!-- mine -->\n  "
           "<key>x-note</key><data>AAE=</data>\n" +
           entries + "</dict>\n</plist>\n";
}

class SettingsPagesTest : public SettingsProgram {
 protected:
    SettingsPagesTest() { MixerFiles::write(files.settingsFile(), settingsOf(skin + percentage)); }
    void expectSettings(const std::string& entries) {
        EXPECT_TRUE(waitForSettings(settingsOf(entries))) << contentsOf(files.settingsFile());
    }

    const std::string skin = "  <key>selectedSkin</key><string>Default iOS</string>\n";
    const std::string percentage = "  <key>displayPercentage</key><true/>\n";
};

TEST_F(SettingsPagesTest, ChooseASkinAndNothingElse) {
    start({"--page", "look"});
    press("Metal");
    expectSettings("  <key>selectedSkin</key><string>Metal</string>\n" + percentage);
    EXPECT_TRUE(waitToShow("This skin brings its own colors."));
}

TEST_F(SettingsPagesTest, TakeALookToStartWithAsAWhole) {
    start({"--page", "look"});
    press("Amber");
    screen.picture().keep("settings-look");
    expectSettings(skin + percentage +
                   "  <key>textColor</key><integer>6</integer>\n"
                   "  <key>thumbTintColor</key><integer>7</integer>\n"
                   "  <key>minimumTrackTintColor</key><integer>7</integer>\n"
                   "  <key>maximumTrackTintColor</key><integer>9</integer>\n");
}

TEST_F(SettingsPagesTest, HidePercentagesAndNothingElse) {
    start({"--page", "look"});
    press("Percentages");
    expectSettings(skin + "  <key>displayPercentage</key><false/>\n");
}

TEST_F(SettingsPagesTest, BindRingtoneAndMediaAndNothingElse) {
    start({"--page", "behavior"});
    press("Ringtone and Media as One");
    expectSettings(skin + percentage + "  <key>bindRingerAndAV</key><true/>\n");
}

TEST_F(SettingsPagesTest, SwitchDetailedLoggingAndNothingElse) {
    start({"--page", "behavior"});
    press("Detailed Logging");
    screen.picture().keep("settings-behavior");
    expectSettings(skin + percentage + "  <key>enableDebugLogging</key><true/>\n");
}

TEST_F(SettingsPagesTest, StartTheMixerWithTheSessionAndNoLonger) {
    const std::filesystem::path file =
        files.folder() / "config/autostart/org.tarnwick.mixer-autostart.desktop";
    start({"--page", "behavior"});
    press("Start with the Session");
    EXPECT_TRUE(rigs::waitUntil([&] {
        return contentsOf(file).find("\nExec=tarnwick --background") != std::string::npos;
    })) << contentsOf(file);
    press("Start with the Session");
    EXPECT_TRUE(rigs::waitUntil([&] {
        return contentsOf(file).empty() ||
               contentsOf(file).find("\nHidden=true") != std::string::npos;
    })) << contentsOf(file);
}

TEST_F(SettingsPagesTest, ResetOneFileAfterAskingAndKeepACopy) {
    files.writeCategories({{"Ringtone", "Bell"}});
    const std::string rows = contentsOf(files.categoryFile());
    const std::string settings = contentsOf(files.settingsFile());
    start({"--page", "behavior"});
    constexpr CGSize tall = {640, 880};
    resize(tall);
    clickOnRow("Reset Look and Behavior…");
    press("Reset");
    EXPECT_TRUE(rigs::waitUntil([&] { return contentsOf(files.settingsFile()) != settings; }));
    EXPECT_EQ(contentsOf(files.settingsFile().string() + ".copy-1"), settings);
    EXPECT_EQ(contentsOf(files.categoryFile()), rows);
}

TEST_F(SettingsPagesTest, WorkOnWaylandToo) {
    const WaylandServer compositor;
    ASSERT_TRUE(compositor.isRunning()) << "weston does not start";
    const std::filesystem::path socket =
        std::filesystem::path(g_getenv("XDG_RUNTIME_DIR")) / g_getenv("WAYLAND_DISPLAY");
    start({"--page", "look"},
          {{"GDK_BACKEND", "wayland"}, {"WAYLAND_DISPLAY", socket}, {"DISPLAY", ""}});
    press("Metal");
    expectSettings("  <key>selectedSkin</key><string>Metal</string>\n" + percentage);
}

}  // namespace
}  // namespace test
