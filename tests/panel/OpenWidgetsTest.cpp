#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UILabel.hpp"
#include "platform/uikit/UIView.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/panel/OpenWidgets.hpp"
#include "tests/support/MixerFiles.hpp"
#include "tests/support/VirtualClock.hpp"

#include <gtest/gtest.h>

using namespace shell;

namespace {

constexpr const char* mixer = TARNWICK_BUNDLE_DIR;
constexpr const char* lamp = TARNWICK_LAMP_BUNDLE;

class OpenWidgetsTest : public testing::Test {
 protected:
    OpenWidgetsTest() {
        shell::installBackends();
        setLogSink([](const std::string&) {});
        setPreferencesDirectory(files.folder().string());
        setMachineModel("iPad4,1");
        AVSystemController::setSharedAVSystemController(std::make_shared<SimulatedAudioDevice>());
    }
    ~OpenWidgetsTest() override {
        opened = {};
        AVSystemController::setSharedAVSystemController(nullptr);
        setMachineModel("");
        setPreferencesDirectory("");
        setLogSink({});
    }

    void open(const std::vector<std::string>& paths) {
        opened = openWidgets(paths, HostKind::Current, 768);
    }
    std::vector<std::string> labels() {
        std::vector<std::string> texts;
        for (const auto& element : accessibilityElements(opened.widget->view()))
            if (std::dynamic_pointer_cast<UILabel>(element))
                texts.push_back(element->accessibilityLabel().value_or("nil"));
        return texts;
    }

    VirtualClock clock;
    test::MixerFiles files;
    OpenedWidgets opened;
};

}  // namespace

TEST_F(OpenWidgetsTest, ShowsTheMixerAboveASmallerBundle) {
    open({mixer, lamp});
    EXPECT_TRUE(opened.anyLoaded);
    EXPECT_TRUE(opened.complaints.empty());
    EXPECT_EQ(opened.widget->preferredSize(), (CGSize{560, 310}));
    opened.widget->present();
    EXPECT_EQ(labels().size(), 6U);
    EXPECT_EQ(labels().back(), "Lamp is shown");
    opened.widget->dismiss();
    EXPECT_EQ(labels(), std::vector<std::string>{"Lamp is hidden"});
}

TEST_F(OpenWidgetsTest, FollowsABundleThatAsksForAnotherSize) {
    open({lamp, mixer});
    int changes = 0;
    opened.widget->setSizeHandler([&changes] { ++changes; });
    UIWindow window(CGRectMake(0, 0, 560, 400));
    window.addSubview(opened.widget->view());
    opened.widget->present();
    changes = 0;
    const CGPoint onTheLamp = {280, 20};
    window.sendTouch(UITouchPhase::Began, onTheLamp, 0);
    window.sendTouch(UITouchPhase::Ended, onTheLamp, 0);
    EXPECT_EQ(changes, 0) << "not from inside the widget's call";
    NSRunLoop::mainRunLoop().runDue();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(opened.widget->preferredSize(), (CGSize{560, 360}));
    EXPECT_EQ(opened.widget->view()->subviews()[1]->frame(), CGRectMake(0, 90, 560, 270));
}

TEST_F(OpenWidgetsTest, LeavesTheOthersStandingWhereOneCannotBeLoaded) {
    open({mixer, "/nowhere/Radio.bundle/", lamp});
    EXPECT_TRUE(opened.anyLoaded);
    EXPECT_EQ(opened.complaints,
              std::vector<std::string>{"there is no bundle at /nowhere/Radio.bundle/"});
    opened.widget->present();
    ASSERT_EQ(labels().size(), 7U);
    EXPECT_EQ(labels()[5], "Radio could not be loaded");
    EXPECT_EQ(labels()[6], "Lamp is shown");
}

TEST_F(OpenWidgetsTest, SaysSoWhereNoneCouldBeLoaded) {
    test::MixerFiles::write(files.folder() / "Info.plist", "garbage");
    open({files.folder().string()});
    EXPECT_FALSE(opened.anyLoaded);
    EXPECT_EQ(opened.complaints.size(), 1U);
    opened.widget->present();
    EXPECT_EQ(labels().size(), 1U);
    EXPECT_TRUE(labels()[0].ends_with(" could not be loaded")) << labels()[0];
}

TEST_F(OpenWidgetsTest, ShowsTheSameBundleTwiceWithAControllerForEach) {
    open({lamp, lamp});
    opened.widget->present();
    EXPECT_EQ(labels(), (std::vector<std::string>{"Lamp is shown", "Lamp is shown"}));
    EXPECT_EQ(opened.widget->preferredSize(), (CGSize{200, 80}));
}

TEST_F(OpenWidgetsTest, HasNoLegacyControllerInABundleThatNamesNone) {
    opened = openWidgets(std::vector<std::string>{lamp}, HostKind::Legacy, 320);
    EXPECT_FALSE(opened.anyLoaded);
    EXPECT_EQ(opened.complaints.size(), 1U);
}
