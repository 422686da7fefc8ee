#include "tests/rigs/Waiting.hpp"
#include "tests/settings/program/SettingsProgram.hpp"

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

}  // namespace
}  // namespace test
