#include "shells/common/BundleLocation.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace shell {
namespace {

namespace fs = std::filesystem;

TEST(BundleLocation, IsTheBuildTreesBesideAProgramThatWasNotInstalled) {
    const test::MixerFiles root;
    const fs::path bundle = root.folder() / "lib" / "Tarnwick.bundle";
    fs::create_directories(bundle);
    EXPECT_EQ(bundlePath((root.folder() / "bin").string()), bundle.string());
}

TEST(BundleLocation, IsTheInstalledOneBeforeTheBuildTrees) {
    const test::MixerFiles root;
    const std::string program = (root.folder() / "bin").string();
    const fs::path installed = bundlePath(program);
    EXPECT_TRUE(installed.string().starts_with(root.folder().string())) << installed;
    EXPECT_EQ(installed.filename(), "Tarnwick.bundle");
    fs::create_directories(root.folder() / "lib" / "Tarnwick.bundle");
    fs::create_directories(installed);
    EXPECT_EQ(bundlePath(program), installed.string());
}

TEST(BundleLocation, IgnoresAFileInTheBundlesPlace) {
    const test::MixerFiles root;
    fs::create_directories(root.folder() / "lib");
    test::MixerFiles::write(root.folder() / "lib" / "Tarnwick.bundle", "");
    EXPECT_NE(bundlePath((root.folder() / "bin").string()),
              (root.folder() / "lib" / "Tarnwick.bundle").string());
}

TEST(BundlePaths, AreTheChosenOnesWhetherOrNotTheyExist) {
    const std::vector<std::string> chosen = {"/b", "/a", "/b"};
    EXPECT_EQ(bundlePaths(chosen, "/usr/bin"), chosen);
}

TEST(BundlePaths, AreTheMixersAndThenTheOtherBundleFoldersBesideItByName) {
    const test::MixerFiles root;
    const std::string lib = (root.folder() / "lib").string();
    for (const char* name : {"Weather.bundle", "Tarnwick.bundle", "Alarm.bundle", "no bundle"})
        fs::create_directories(fs::path(lib) / name);
    test::MixerFiles::write(fs::path(lib) / "File.bundle", "");
    fs::create_symlink("/nowhere", fs::path(lib) / "Dangling.bundle");
    const std::vector<std::string> expected = {lib + "/Tarnwick.bundle", lib + "/Alarm.bundle",
                                               lib + "/Weather.bundle"};
    EXPECT_EQ(bundlePaths({}, (root.folder() / "bin").string()), expected);
}

TEST(BundlePaths, NameTheMixersPlaceWhereThereIsNothing) {
    const test::MixerFiles root;
    const std::string program = (root.folder() / "bin").string();
    EXPECT_EQ(bundlePaths({}, program), std::vector<std::string>{bundlePath(program)});
}

TEST(ModulePath, LiesBesideTheBundle) {
    const test::MixerFiles root;
    const fs::path libraries = root.folder() / "lib";
    fs::create_directories(libraries / "Tarnwick.bundle");
    EXPECT_EQ(modulePath("module.so", (root.folder() / "bin").string()),
              (libraries / "module.so").string());
}

TEST(ProgramDirectory, HoldsThisProgram) {
    EXPECT_TRUE(fs::exists(fs::path(programDirectory()) / "shell_common_test"));
}

}  // namespace
}  // namespace shell
