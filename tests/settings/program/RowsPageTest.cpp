#include "tests/rigs/OtherProgram.hpp"
#include "tests/rigs/PulseAudioServer.hpp"
#include "tests/rigs/Waiting.hpp"
#include "tests/settings/program/SettingsProgram.hpp"

#include <X11/keysym.h>

#include <csignal>
#include <filesystem>

namespace test {
namespace {

/// As somebody writes it by hand: comments, keys of another program, indentation of no program's.
constexpr const char* ringtone =
    "  <!-- the loud one -->\n"
    "  <dict><key>categoryName</key><string>Ringtone</string>\n"
    "    <key>prettyCategoryName</key><string>Bell</string>\n"
    "    <key>visible</key><true/></dict>\n";
constexpr const char* media =
    "  <dict>\n"
    "    <key>note</key><integer>7</integer>\n"
    "    <key>visible</key>  <true/>\n"
    "    <key>categoryName</key><string>Audio/Video</string>\n"
    "    <key>prettyCategoryName</key><string>Music</string>\n"
    "  </dict>\n";
constexpr const char* calls =
    "  <dict><key>categoryName</key><string>PhoneCall</string>"
    "<key>prettyCategoryName</key><string>Calls</string><key>visible</key><true/></dict>\n";

std::string listOf(const std::vector<std::string>& rows) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<array>\n";
    for (const std::string& row : rows)
        text += row;
    return text + "</array>\n</plist>\n<!-- by hand -->\n";
}

std::string replaced(std::string text, const std::string& old, const std::string& with) {
    return text.replace(text.find(old), old.size(), with);
}

class RowsPageTest : public SettingsProgram {
 protected:
    RowsPageTest() { MixerFiles::write(files.categoryFile(), original); }

    const std::string original = listOf({ringtone, media, calls});
};

TEST_F(RowsPageTest, WritesACaptionThatIsTypedAndNothingElse) {
    start();
    clickOn("The output in use");
    typeWith(XK_Control_L, XK_a);
    type("tunes");
    EXPECT_TRUE(waitForCategories(replaced(original, "Music", "tunes")))
        << contentsOf(files.categoryFile());
}

TEST_F(RowsPageTest, HidesARowBySwitchAndNothingElse) {
    start();
    press("Show the row for Phone calls");
    EXPECT_TRUE(
        waitForCategories(listOf({ringtone, media, replaced(calls, "<true/>", "<false/>")})))
        << contentsOf(files.categoryFile());
}

TEST_F(RowsPageTest, MovesARowByKeysAndKeepsItsFocus) {
    start();
    clickOn("Phone calls");
    typeWith(XK_Alt_L, XK_Up);
    ASSERT_TRUE(waitForCategories(listOf({ringtone, calls, media})))
        << contentsOf(files.categoryFile());
    typeWith(XK_Alt_L, XK_Up);
    EXPECT_TRUE(waitForCategories(listOf({calls, ringtone, media})))
        << contentsOf(files.categoryFile());
    typeWith(XK_Alt_L, XK_Down);
    EXPECT_TRUE(waitForCategories(listOf({ringtone, calls, media})))
        << contentsOf(files.categoryFile());
}

TEST_F(RowsPageTest, MovesARowByDraggingItsHandle) {
    start();
    const CGPoint from = middleOf(find("Ringtone and event sounds"));
    const CGPoint to = middleOf(find("Phone calls"));
    // In a window 560 wide at the left of the screen; the pages are as wide as they may be.
    constexpr CGFloat handle = 55;
    user.moveTo(handle, from.y);
    user.press();
    constexpr int steps = 10;
    for (int i = 1; i <= steps; ++i) {
        user.moveTo(handle + 10, from.y + (to.y - from.y) * i / steps);
        rigs::runFor(0.03);
    }
    user.release();
    EXPECT_TRUE(waitForCategories(listOf({media, calls, ringtone})))
        << contentsOf(files.categoryFile());
}

TEST_F(RowsPageTest, RemovesARowAndPutsItBackAsItWas) {
    start();
    press("More for The output in use");
    rigs::runFor(0.5);  // Until the menu takes keys: screen readers do not find it everywhere.
    user.typeKey(XK_Up);
    user.typeKey(XK_Return);
    ASSERT_TRUE(waitForCategories(listOf({ringtone, calls}))) << contentsOf(files.categoryFile());
    press("Undo");
    EXPECT_TRUE(waitForCategories(original)) << contentsOf(files.categoryFile());
}

TEST_F(RowsPageTest, ShowsWhatAnotherProgramWrote) {
    start();
    ASSERT_TRUE(shows("Phone calls"));
    MixerFiles::write(files.categoryFile(), listOf({ringtone, media}));
    EXPECT_TRUE(rigs::waitUntil([&] { return !shows("Phone calls"); }));
}

TEST_F(RowsPageTest, TakesAChangeBackThatCannotBeWritten) {
    disk = Disk::Full;
    start();
    press("Show the row for Phone calls");
    EXPECT_TRUE(rigs::waitUntil([&] { return isOn("Show the row for Phone calls"); }));
    EXPECT_EQ(contentsOf(files.categoryFile()), original);
}

TEST_F(RowsPageTest, LeavesAMalformedFileAloneAndOffersWaysOut) {
    const std::string malformed = replaced(original, "</dict>", "");
    MixerFiles::write(files.categoryFile(), malformed);
    start();
    EXPECT_TRUE(waitToShow("The list of rows cannot be read"));
    EXPECT_EQ(contentsOf(files.categoryFile()), malformed);
    press("Start Anew, Keeping This One");
    EXPECT_TRUE(rigs::waitUntil([&] { return !shows("The list of rows cannot be read"); }));
    EXPECT_EQ(contentsOf(files.categoryFile().string() + ".unreadable-1"), malformed);
}

TEST_F(RowsPageTest, IsOpenedByTheMixerForTheSameFiles) {
    const std::filesystem::path own = files.folder() / "100%f 'mine'";
    const std::filesystem::path list = own / files.categoryFile().filename();
    std::filesystem::create_directory(own);
    MixerFiles::write(list, original);
    command = {TARNWICK_PROGRAM, "--settings"};
    start({"--preferences", own});
    EXPECT_TRUE(rigs::waitUntil([&] { return program.hasEnded(); }));
    press("Show the row for Phone calls");
    const std::string hidden = listOf({ringtone, media, replaced(calls, "<true/>", "<false/>")});
    EXPECT_TRUE(rigs::waitUntil([&] { return contentsOf(list) == hidden; })) << contentsOf(list);
    typeWith(XK_Control_L, XK_w);
    EXPECT_TRUE(rigs::waitUntil([&] { return screen.windowsOf(settingsClass).empty(); }));
    EXPECT_TRUE(rigs::waitUntil([&] { return reader.findProgram(settingsClass).program.empty(); }));
}

TEST_F(RowsPageTest, AddsARowForAPlayerThatIsSoughtByItsName) {
    rigs::PulseAudioServer sound(folder);
    sound.startAndWait();
    rigs::OtherProgram player(sound.address(), {.name = "Wave Radio"});
    const auto music = player.play({});
    start();
    press("Add a Row…");
    ASSERT_TRUE(waitToShow("Plays now"));
    type("wave");
    user.typeKey(XK_Return);
    const std::string row = "<string>app:Wave Radio</string>";
    EXPECT_TRUE(rigs::waitUntil([&] {
        return contentsOf(files.categoryFile()).find(row) != std::string::npos;
    })) << contentsOf(files.categoryFile());
    EXPECT_TRUE(waitToShow("Everything that Wave Radio plays"));
}

TEST_F(RowsPageTest, OffersANewUserSimplerNamesOnce) {
    const auto startAsNew = [&] {
        files.writeCategories({{"Ringtone", "Ringtone"},  // As the mixer writes it.
                               {"Audio/Video", "Audio/Video"},
                               {"HeadsetBT", "BT Headset"},
                               {"HeadphonesBT", "BT Headphones"},
                               {"PhoneCall", "Phone Call"}});
        start();
        ASSERT_TRUE(waitToShow("The output in use"));
    };
    startAsNew();
    press("Use Them");
    EXPECT_TRUE(rigs::waitUntil([&] {
        const std::string list = contentsOf(files.categoryFile());
        return list.find("<string>Media</string>") != std::string::npos &&
               list.find("<string>Calls</string>") != std::string::npos &&
               list.find("BT Headset") == std::string::npos;
    })) << contentsOf(files.categoryFile());
    EXPECT_FALSE(shows("Simpler names for the rows"));
    program.signal(SIGTERM);
    program.wait();
    startAsNew();
    EXPECT_FALSE(shows("Simpler names for the rows"));
}

TEST_F(RowsPageTest, LeavesNoTemporaryFilesWhenItIsTerminated) {
    const std::filesystem::path temporary = files.folder() / "temporary";
    std::filesystem::create_directory(temporary);
    start({}, {{"TMPDIR", temporary}});
    EXPECT_FALSE(std::filesystem::is_empty(temporary)) << "the preview has a folder of its own";
    program.signal(SIGTERM);
    program.wait();
    EXPECT_TRUE(std::filesystem::is_empty(temporary));
}

TEST_F(RowsPageTest, HasANameForEveryControl) {
    start();
    rigs::runFor(0.5);  // Until nothing moves any more.
    screen.picture().keep("settings-rows");
    for (const Object& each : shown()) {
        if (!reader.hasState(each, AtSpiClient::stateFocusable)) continue;
        const std::string name = reader.name(each);
        EXPECT_FALSE(name.starts_with("Gtk") || name.starts_with("Adw")) << name;
    }
}

}  // namespace
}  // namespace test
