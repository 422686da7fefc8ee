#include "platform/foundation/PreferencesDirectory.hpp"
#include "tests/foundation/TemporaryFolder.hpp"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace {

class Preferences : public testing::Test {
 protected:
    void SetUp() override {
        if (std::filesystem::exists(fixedPreferencesDirectory)) {
            GTEST_SKIP() << "this system has the fixed folder itself";
        }
    }
    ~Preferences() override { setPreferencesDirectory(""); }

    ScopedVariable config{"XDG_CONFIG_HOME", nullptr};
    ScopedVariable home{"HOME", "/home/user"};
};

TEST_F(Preferences, LieBelowTheConfigurationFolder) {
    config.set("/etc/conf");
    EXPECT_EQ(preferencesDirectory(), "/etc/conf/tarnwick/");
    config.set("/etc/conf/");
    EXPECT_EQ(preferencesDirectory(), "/etc/conf/tarnwick/");
}

TEST_F(Preferences, LieInTheHomeFolderWithoutAUsableConfigurationFolder) {
    EXPECT_EQ(preferencesDirectory(), "/home/user/.config/tarnwick/");
    config.set("");
    EXPECT_EQ(preferencesDirectory(), "/home/user/.config/tarnwick/");
    config.set("relative/conf");
    EXPECT_EQ(preferencesDirectory(), "/home/user/.config/tarnwick/");
}

TEST_F(Preferences, FindTheHomeFolderInTheUserDatabase) {
    const passwd* entry = getpwuid(getuid());
    if (!entry) GTEST_SKIP() << "the user has no entry in the user database";
    const std::string expected = std::string(entry->pw_dir) + "/.config/tarnwick/";
    home.set(nullptr);
    EXPECT_EQ(preferencesDirectory(), expected);
    home.set("");
    EXPECT_EQ(preferencesDirectory(), expected);
    home.set("relative");
    EXPECT_EQ(preferencesDirectory(), expected);
}

TEST_F(Preferences, LieWhereAShellPutsThem) {
    setPreferencesDirectory("/tmp/prefs");
    EXPECT_EQ(preferencesDirectory(), "/tmp/prefs/");
    setPreferencesDirectory("/tmp/others/");
    EXPECT_EQ(preferencesDirectory(), "/tmp/others/");
    setPreferencesDirectory("");
    EXPECT_EQ(preferencesDirectory(), "/home/user/.config/tarnwick/");
}

TEST_F(Preferences, StayWhereAShellPutThemWhenTheWorkingFolderChanges) {
    const TemporaryFolder folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    setPreferencesDirectory("prefs");
    std::filesystem::current_path(before);
    EXPECT_EQ(preferencesDirectory(), folder / "prefs/");
}

TEST_F(Preferences, MoveOnlyPathsUnderTheFixedFolder) {
    setPreferencesDirectory("/tmp/prefs");
    const std::string fixed = fixedPreferencesDirectory;
    EXPECT_EQ(resolvedPath(fixed + "a.plist"), "/tmp/prefs/a.plist");
    EXPECT_EQ(resolvedPath(fixed), "/tmp/prefs/");
    EXPECT_EQ(resolvedPath("/var/mobile/Library/Preferences"), "/var/mobile/Library/Preferences");
    EXPECT_EQ(resolvedPath("/x" + fixed + "a.plist"), "/x" + fixed + "a.plist");
    EXPECT_EQ(resolvedPath("a.plist"), "a.plist");
    EXPECT_EQ(resolvedPath(""), "");
}

TEST_F(Preferences, CreateNothing) {
    const TemporaryFolder folder;
    config.set(folder.path().c_str());
    (void)preferencesDirectory();
    (void)resolvedPath(std::string(fixedPreferencesDirectory) + "a.plist");
    EXPECT_EQ(folder.count(), 0U);
}

}  // namespace
