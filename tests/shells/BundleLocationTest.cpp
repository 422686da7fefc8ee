#include "shells/common/BundleLocation.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace shell {
namespace {

namespace fs = std::filesystem;

TEST(BundleLocation, IsTheChosenFolderWhetherOrNotItExists) {
    EXPECT_EQ(bundlePath("/chosen", "/usr/bin"), "/chosen");
}

TEST(BundleLocation, IsTheBuildTreesBesideAProgramThatWasNotInstalled) {
    const test::MixerFiles root;
    const fs::path bundle = root.folder() / "lib" / "Tarnwick.bundle";
    fs::create_directories(bundle);
    EXPECT_EQ(bundlePath(std::nullopt, (root.folder() / "bin").string()), bundle.string());
}

TEST(BundleLocation, IsTheInstalledOneBeforeTheBuildTrees) {
    const test::MixerFiles root;
    const std::string program = (root.folder() / "bin").string();
    const fs::path installed = bundlePath(std::nullopt, program);
    EXPECT_TRUE(installed.string().starts_with(root.folder().string())) << installed;
    EXPECT_EQ(installed.filename(), "Tarnwick.bundle");
    fs::create_directories(root.folder() / "lib" / "Tarnwick.bundle");
    fs::create_directories(installed);
    EXPECT_EQ(bundlePath(std::nullopt, program), installed.string());
}

TEST(BundleLocation, IgnoresAFileInTheBundlesPlace) {
    const test::MixerFiles root;
    fs::create_directories(root.folder() / "lib");
    test::MixerFiles::write(root.folder() / "lib" / "Tarnwick.bundle", "");
    EXPECT_NE(bundlePath(std::nullopt, (root.folder() / "bin").string()),
              (root.folder() / "lib" / "Tarnwick.bundle").string());
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
