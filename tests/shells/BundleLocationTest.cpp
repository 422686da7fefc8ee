#include "shells/common/Installation.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace shell {
namespace {

namespace fs = std::filesystem;

TEST(BundleLocation, IsTheLibraryFolderOfThisVeryBuildForItsOwnPrograms) {
    EXPECT_EQ(bundlePath(programDirectory()), TARNWICK_BUNDLE);
}

TEST(BundleLocation, FollowsTheProgramsWherever) {
    const fs::path way = fs::path(TARNWICK_BUNDLE).lexically_relative(programDirectory());
    EXPECT_EQ(bundlePath("/opt/mixer/bin"), ("/opt/mixer/bin" / way).lexically_normal().string());
}

TEST(IconPaths, LeadToPicturesOfThisVeryBuildForItsOwnPrograms) {
    const auto paths = iconPaths("org.tarnwick.mixer", programDirectory());
    ASSERT_FALSE(paths.empty());
    for (const std::string& path : paths)
        EXPECT_TRUE(fs::is_regular_file(path)) << path;
}

TEST(BundlePaths, AreTheChosenOnesWhetherOrNotTheyExist) {
    const std::vector<std::string> chosen = {"/b", "/a", "/b"};
    EXPECT_EQ(bundlePaths(chosen, "/usr/bin"), chosen);
}

TEST(BundlePaths, AreTheMixersAndThenTheOtherBundleFoldersBesideItByName) {
    const test::MixerFiles root;
    const std::string programs = (root.folder() / "bin").string();
    const std::string lib = fs::path(bundlePath(programs)).parent_path().string();
    for (const char* name : {"Weather.bundle", "Tarnwick.bundle", "Alarm.bundle", "no bundle"})
        fs::create_directories(fs::path(lib) / name);
    test::MixerFiles::write(fs::path(lib) / "File.bundle", "");
    fs::create_symlink("/nowhere", fs::path(lib) / "Dangling.bundle");
    const std::vector<std::string> expected = {lib + "/Tarnwick.bundle", lib + "/Alarm.bundle",
                                               lib + "/Weather.bundle"};
    EXPECT_EQ(bundlePaths({}, programs), expected);
}

TEST(BundlePaths, NameTheMixersPlaceWhereThereIsNothing) {
    const test::MixerFiles root;
    const std::string program = (root.folder() / "bin").string();
    EXPECT_EQ(bundlePaths({}, program), std::vector<std::string>{bundlePath(program)});
}

TEST(ModulePath, LiesBesideTheBundle) {
    EXPECT_EQ(modulePath("module.so", "/usr/bin"),
              (fs::path(bundlePath("/usr/bin")).parent_path() / "module.so").string());
}

TEST(ProgramDirectory, HoldsThisProgram) {
    EXPECT_TRUE(fs::exists(fs::path(programDirectory()) / "shell_common_test"));
}

}  // namespace
}  // namespace shell
