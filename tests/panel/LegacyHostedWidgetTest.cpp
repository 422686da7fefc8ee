#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/panel/LegacyHostedWidget.hpp"
#include "shells/panel/PanelView.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

using namespace shell;

namespace {

/// The real widget in a window that is a legacy host.
class LegacyHostedWidgetTest : public testing::Test {
 protected:
    LegacyHostedWidgetTest() {
        shell::installBackends();
        setLogSink([](const std::string&) {});
        setPreferencesDirectory(files.folder().string());
        setMachineModel("iPhone4,1");
        AVSystemController::setSharedAVSystemController(device);
        const auto created = shell::createLegacyController(TARNWICK_BUNDLE_DIR);
        EXPECT_TRUE(created) << created.error();
        widget = std::make_unique<LegacyHostedWidget>(*created);
        NSNotificationCenter::defaultCenter().add(
            observer, [this](const NSNotification& posted) { announced.push_back(posted.name); },
            std::nullopt, nullptr);
    }
    ~LegacyHostedWidgetTest() override {
        NSNotificationCenter::defaultCenter().removeObserver(observer.get());
        widget = nullptr;
        AVSystemController::setSharedAVSystemController(nullptr);
        setLogSink({});
    }
    void show() {
        widget->view()->setFrame({{15, 25}, widget->preferredSize()});
        window->addSubview(widget->view());
        widget->present();
    }
    /// A point of the category's slider in the window, at that part of its width.
    CGPoint onSlider(int category, CGFloat part) {
        const auto slider = widget->view()->viewWithTag(2000 + category);
        const CGSize size = slider->frame().size;
        return slider->convertPointToView({size.width * part, size.height / 2}, nullptr);
    }
    void tap(const CGPoint& point) {
        window->sendTouch(UITouchPhase::Began, point);
        window->sendTouch(UITouchPhase::Ended, point);
    }
    float volume(const char* category) {
        float value = -1;
        device->getVolume(value, category);
        return value;
    }

    test::MixerFiles files;
    std::shared_ptr<SimulatedAudioDevice> device = std::make_shared<SimulatedAudioDevice>();
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(CGRectMake(0, 0, 400, 400));
    std::shared_ptr<NSObject> observer = std::make_shared<NSObject>();
    std::vector<std::string> announced;
    std::unique_ptr<LegacyHostedWidget> widget;
};

TEST_F(LegacyHostedWidgetTest, IsAsLargeAsItsControllerSaysWithRoomForTheLastRow) {
    EXPECT_EQ(widget->preferredSize(), (CGSize{320, 270}));
    EXPECT_EQ(announced, std::vector<std::string>{"org.tarnwick.mixer.isvisible"});
}

TEST_F(LegacyHostedWidgetTest, SetsTheVolumeWhereItIsTapped) {
    show();
    tap(onSlider(1, 0.75F));
    EXPECT_GT(volume("Audio/Video"), 0.6F);
    EXPECT_EQ(volume("Ringtone"), 0.5F);
    tap(onSlider(1, 0.25F));
    EXPECT_LT(volume("Audio/Video"), 0.4F);
}

TEST_F(LegacyHostedWidgetTest, SetsTheVolumeWhereItIsTappedOnThePanelOfAWindow) {
    const auto panel = std::make_shared<PanelView>();
    window->addSubview(panel);
    widget->present();
    const CGRect whole = {{0, 0}, widget->preferredSize()};
    panel->setWidgetView(widget->view());
    panel->setLayout({whole.size, whole, whole}, PanelEdge::Hard);
    window->layoutIfNeeded();
    tap(onSlider(1, 0.75F));
    EXPECT_GT(volume("Audio/Video"), 0.6F);
}

TEST_F(LegacyHostedWidgetTest, DoesNotDragASlider) {
    show();
    window->sendTouch(UITouchPhase::Began, onSlider(0, 0.5F));
    window->sendTouch(UITouchPhase::Moved, onSlider(0, 0.8F));
    EXPECT_EQ(volume("Ringtone"), 0.5F);
    window->sendTouch(UITouchPhase::Ended, onSlider(0, 0.8F));
    EXPECT_EQ(volume("Ringtone"), 0.5F) << "that was no tap";
}

TEST_F(LegacyHostedWidgetTest, TakesAFingerThatTremblesForATap) {
    show();
    const CGPoint point = onSlider(0, 0.75F);
    window->sendTouch(UITouchPhase::Began, point);
    window->sendTouch(UITouchPhase::Moved, {point.x + 6, point.y + 8});
    window->sendTouch(UITouchPhase::Ended, point);
    EXPECT_GT(volume("Ringtone"), 0.6F);
    window->sendTouch(UITouchPhase::Began, onSlider(0, 0.25F));
    window->sendTouch(UITouchPhase::Moved, {onSlider(0, 0.25F).x + 6, point.y + 9});
    window->sendTouch(UITouchPhase::Ended, onSlider(0, 0.25F));
    EXPECT_GT(volume("Ringtone"), 0.6F) << "one point too far";
}

TEST_F(LegacyHostedWidgetTest, ForgetsATouchThatIsCancelled) {
    show();
    window->sendTouch(UITouchPhase::Began, onSlider(0, 0.75F));
    window->cancelTouches();
    EXPECT_EQ(volume("Ringtone"), 0.5F);
    tap(onSlider(0, 0.75F));
    EXPECT_GT(volume("Ringtone"), 0.6F);
}

TEST_F(LegacyHostedWidgetTest, FollowsTheVolumeOnlyWhileItIsPresented) {
    show();
    const auto slider = std::dynamic_pointer_cast<UISlider>(widget->view()->viewWithTag(2000));
    postEffectiveVolumeDidChange("Ringtone", 0.25F);
    EXPECT_EQ(slider->value(), 25);
    announced.clear();
    widget->dismiss();
    EXPECT_EQ(announced, std::vector<std::string>{"org.tarnwick.mixer.ishidden"});
    postEffectiveVolumeDidChange("Ringtone", 0.75F);
    EXPECT_EQ(slider->value(), 25);
}

TEST_F(LegacyHostedWidgetTest, ComesBackWithANewView) {
    show();
    widget->dismiss();
    widget->present();
    EXPECT_NE(widget->view()->viewWithTag(2004), nullptr);
    tap(onSlider(0, 0.75F));
    EXPECT_GT(volume("Ringtone"), 0.6F);
}

TEST_F(LegacyHostedWidgetTest, AsksForTheRowsAnewWhenItComesBack) {
    show();
    int sizes = 0;
    widget->setSizeHandler([&sizes] { ++sizes; });
    widget->dismiss();
    files.writeShownCategories(2);
    widget->present();
    EXPECT_EQ(widget->preferredSize(), (CGSize{320, 120}));
    EXPECT_EQ(sizes, 1);
}

}  // namespace
