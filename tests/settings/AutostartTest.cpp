#include "shells/settings/files/Autostart.hpp"
#include "tests/foundation/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace {

using settings::Autostart;
using Start = Autostart::Start;

const std::string userFile = "user/autostart/org.tarnwick.mixer-autostart.desktop";
const std::string systemFile = "etc/autostart/org.tarnwick.mixer-autostart.desktop";
const std::string unit = "units/tarnwick.service";
const std::string mask = "user/systemd/user/tarnwick.service";
const std::string entry =
    "# installed\n[Desktop Entry]\nType=Application\nName=Tarnwick\nName[de]=Mischer\n"
    "Exec=tarnwick --background\nX-GNOME-Autostart-enabled=true\n\n[Other]\nkey=1\n";

class AutostartTest : public testing::Test {
 protected:
    Autostart autostart() const {
        return Autostart({folder / "user", {folder / "first", folder / "etc"}, {folder / "units"}});
    }
    bool isOn() const { return autostart().isOn(); }
    void set(Start start) const { EXPECT_EQ(autostart().set(start), std::nullopt); }
    bool isThere(const std::string& name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(folder / name));
    }

    TemporaryFolder folder;
};

TEST_F(AutostartTest, IsOnByTheSystemsFile) {
    EXPECT_FALSE(isOn());
    folder.write(systemFile, entry);
    EXPECT_TRUE(isOn());
    folder.write("first/autostart/org.tarnwick.mixer-autostart.desktop",
                 "[Desktop Entry]\nHidden=true\nExec=tarnwick\n");
    EXPECT_FALSE(isOn()) << "the first folder counts";
}

TEST_F(AutostartTest, IsWhatTheUsersFileSays) {
    folder.write(systemFile, entry);
    const std::string command = "[Desktop Entry]\nExec=tarnwick\n";
    for (const char* off : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
        folder.write(userFile, command + off);
        EXPECT_FALSE(isOn()) << off;
    }
    folder.write(userFile, command + "Hidden=false\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_TRUE(isOn());
    for (const char* broken : {"no entry", "", "[Desktop Entry]\nType=Application\n"}) {
        folder.write(userFile, broken);
        EXPECT_FALSE(isOn()) << broken;
    }
}

TEST_F(AutostartTest, HidesTheSystemsFileAndLetsItCountAgain) {
    folder.write(systemFile, entry);
    set(Start::Yes);
    EXPECT_FALSE(isThere(userFile)) << "it is on";
    set(Start::No);
    EXPECT_FALSE(isOn());
    EXPECT_EQ(folder.read(systemFile), entry);
    const std::string own = folder.read(userFile);
    EXPECT_NE(own.find("\nHidden=true\n"), std::string::npos);
    EXPECT_NE(own.find("Name[de]=Mischer\n"), std::string::npos);
    set(Start::No);
    EXPECT_EQ(folder.read(userFile), own);
    set(Start::Yes);
    EXPECT_TRUE(isOn());
    EXPECT_FALSE(isThere(userFile));
}

TEST_F(AutostartTest, KeepsWhatElseTheUsersFileHolds) {
    folder.write(systemFile, entry);
    const std::string own =
        "# mine\n[Desktop Entry]\n# this one\nExec=tarnwick --background -x\n"
        "Name[fr]=Son\nX-Mine=\\s1;2\n\n[More]\na=b\n";
    folder.write(userFile, own);
    set(Start::No);
    EXPECT_FALSE(isOn());
    set(Start::Yes);
    EXPECT_TRUE(isOn());
    EXPECT_EQ(folder.read(userFile), own);
}

TEST_F(AutostartTest, SwitchesOnWhatADesktopSwitchedOff) {
    folder.write(systemFile, entry);
    folder.write(userFile, "[Desktop Entry]\nExec=a\nX-GNOME-Autostart-enabled=false\n");
    set(Start::Yes);
    EXPECT_EQ(folder.read(userFile), "[Desktop Entry]\nExec=a\nX-GNOME-Autostart-enabled=true\n");
}

TEST_F(AutostartTest, CompletesAFileThatOnlyHidTheSystemsOne) {
    folder.write(systemFile, entry);
    folder.write(userFile, "[Desktop Entry]\nHidden=true\nX-Mine=1\n");
    set(Start::Yes);
    EXPECT_TRUE(isOn());
    const std::string own = folder.read(userFile);
    EXPECT_NE(own.find("Exec=tarnwick --background\n"), std::string::npos);
    EXPECT_NE(own.find("X-Mine=1\n"), std::string::npos);
}

TEST_F(AutostartTest, MakesAFileWhereNoneIsInstalled) {
    set(Start::No);
    EXPECT_FALSE(isThere(userFile));
    set(Start::Yes);
    EXPECT_TRUE(isOn());
    set(Start::No);
    EXPECT_FALSE(isOn());
}

TEST_F(AutostartTest, MasksTheUnitToo) {
    folder.write(systemFile, entry);
    folder.write(unit, "[Unit]\n");
    EXPECT_TRUE(isOn());
    set(Start::No);
    EXPECT_EQ(std::filesystem::read_symlink(folder / mask), "/dev/null");
    EXPECT_FALSE(isOn());
    set(Start::No);
    set(Start::Yes);
    EXPECT_FALSE(isThere(mask));
    EXPECT_TRUE(isOn());
}

TEST_F(AutostartTest, GoesByTheUnitWhereThereIsNoFile) {
    folder.write(unit, "[Unit]\n");
    EXPECT_TRUE(isOn());
    set(Start::No);
    EXPECT_FALSE(isOn());
    set(Start::Yes);
    EXPECT_TRUE(isOn());
    EXPECT_FALSE(isThere(userFile));
}

TEST_F(AutostartTest, LeavesAUnitOfTheUsersOwn) {
    folder.write(unit, "[Unit]\n");
    folder.write(mask, "[Unit]\n# mine\n");
    EXPECT_TRUE(autostart().set(Start::No));
    set(Start::Yes);
    EXPECT_EQ(folder.read(mask), "[Unit]\n# mine\n");
}

TEST_F(AutostartTest, TellsWhatCannotBeDone) {
    folder.write(userFile, "no entry");
    EXPECT_NE(autostart().set(Start::Yes)->find("cannot be read"), std::string::npos);
    EXPECT_EQ(folder.read(userFile), "no entry");
    std::filesystem::remove_all(folder / "user");
    folder.write("user", "a file");
    EXPECT_NE(autostart().set(Start::Yes)->find("cannot be written"), std::string::npos);
}

}  // namespace
