#include "platform/foundation/NSLog.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace shell {
namespace {

namespace fs = std::filesystem;

class WidgetBundleTest : public testing::Test {
 protected:
    WidgetBundleTest() {
        installBackends();
        setLogSink([](const std::string&) {});
    }
    ~WidgetBundleTest() override { setLogSink({}); }

    void writeInfo(const std::string& entries) const {
        test::MixerFiles::write(folder.folder() / "Info.plist",
                                "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
    }
    test::MixerFiles folder;
};

TEST_F(WidgetBundleTest, GivesThePrincipalClassesController) {
    const auto controller = createController(TARNWICK_BUNDLE);
    ASSERT_TRUE(controller) << controller.error();
    EXPECT_EQ((*controller)->className(), "TarnwickViewControllerNew");
}

TEST_F(WidgetBundleTest, GivesARegisteredClassByItsName) {
    ASSERT_TRUE(loadBundle(TARNWICK_BUNDLE));
    EXPECT_TRUE(createObject("TarnwickViewControllerNew"));
    EXPECT_EQ(createObject("Nobody").error(), "there is no class Nobody");
}

TEST_F(WidgetBundleTest, SaysWhyThereIsNoController) {
    EXPECT_EQ(createController("/nowhere").error(), "there is no bundle at /nowhere");
    EXPECT_NE(createController(folder.folder().string()).error(), "");
    test::MixerFiles::write(folder.folder() / "Info.plist", "garbage");
    EXPECT_NE(createController(folder.folder().string()).error(), "");
}

TEST_F(WidgetBundleTest, SaysThatTheModuleIsMissingOrNoModule) {
    writeInfo(
        "<key>CFBundleExecutable</key><string>Module</string>"
        "<key>NSPrincipalClass</key><string>TarnwickViewControllerNew</string>");
    EXPECT_TRUE(createController(folder.folder().string()).error().starts_with("cannot load "));
}

}  // namespace
}  // namespace shell
