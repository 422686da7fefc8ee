#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UILabel.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "tests/support/MixerFiles.hpp"
#include "tests/support/VirtualClock.hpp"

#include <gtest/gtest.h>

using namespace shell;

namespace {

/// The real widget in a window, with fingers on it and somebody else at the device.
class TrueRows : public testing::Test {
 protected:
    TrueRows() {
        shell::installBackends();
        setLogSink([](const std::string&) {});
        setPreferencesDirectory(files.folder().string());
        setMachineModel("iPad4,1");
        AVSystemController::setSharedAVSystemController(device);
        files.writeCategories(
            {{"Ringtone", "Bell"}, {"HeadsetBT", "Headset"}, {"HeadphonesBT", "Headphones"}});
    }
    ~TrueRows() override {
        widget.reset();
        AVSystemController::setSharedAVSystemController(nullptr);
        setPreferencesDirectory("");
        setLogSink({});
    }
    void present() {
        const auto created = shell::createController(TARNWICK_BUNDLE_DIR);
        ASSERT_TRUE(created) << created.error();
        widget = std::make_unique<HostedWidget>(*created, 320);
        widget->present();
        window->setFrame({{0, 0}, widget->preferredSize()});
        window->addSubview(widget->view());
    }
    std::shared_ptr<UISlider> slider(int row) {
        return std::dynamic_pointer_cast<UISlider>(widget->view()->viewWithTag(2000 + row));
    }
    std::string caption(int row) {
        const auto label =
            std::dynamic_pointer_cast<UILabel>(widget->view()->viewWithTag(1000 + row));
        return label ? label->text().value_or("nil") : "none";
    }
    CGPoint thumb(int row) {
        const auto rowSlider = slider(row);
        const CGRect place = rowSlider->convertRectToView(rowSlider->thumbRect(), nullptr);
        return {CGRectGetMidX(place), CGRectGetMidY(place)};
    }
    void hold(int row) { touch(UITouchPhase::Began, thumb(row), row); }
    void drag(int row, CGFloat points) {
        const CGPoint at = thumb(row);
        touch(UITouchPhase::Moved, {at.x + points, at.y}, row);
    }
    void release(int row) { touch(UITouchPhase::Ended, thumb(row), row); }
    void step(int row, double steps) {
        window->sendScroll(thumb(row), steps);
        NSRunLoop::mainRunLoop().runDue();
    }
    void changeElsewhere(const char* category, float volume) {
        device->changeVolume(category, volume);
        NSRunLoop::mainRunLoop().runDue();
    }

    VirtualClock clock;
    test::MixerFiles files;
    std::shared_ptr<SimulatedAudioDevice> device = std::make_shared<SimulatedAudioDevice>();
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>();
    std::unique_ptr<HostedWidget> widget;

 private:
    void touch(UITouchPhase phase, const CGPoint& point, int finger) {
        window->sendTouch(phase, point, finger);
        NSRunLoop::mainRunLoop().runDue();
    }
};

TEST_F(TrueRows, AreUnknownAgainAfterADragWithoutAVolume) {
    device->setReadable("HeadsetBT", false);
    present();
    hold(1);
    drag(1, 100);
    EXPECT_NE(caption(1), "Headset: unknown") << "the finger is followed";
    release(1);
    EXPECT_EQ(caption(1), "Headset: unknown");
    EXPECT_EQ(slider(1)->value(), 0);
}

TEST_F(TrueRows, AreUnknownAgainAfterAStepWithoutAVolume) {
    device->setReadable("HeadsetBT", false);
    present();
    step(1, 3);
    EXPECT_EQ(caption(1), "Headset: unknown");
    window->setFocusedView(slider(1));
    EXPECT_TRUE(window->sendKey(UIKey::End));
    NSRunLoop::mainRunLoop().runDue();
    EXPECT_EQ(caption(1), "Headset: unknown");
    EXPECT_EQ(slider(1)->value(), 0);
}

TEST_F(TrueRows, AreUnknownAfterADragInWhichTheVolumeWent) {
    present();
    hold(1);
    drag(1, 20);
    device->setReadable("HeadsetBT", false);
    drag(1, 40);
    EXPECT_NE(caption(1), "Headset: unknown");
    release(1);
    EXPECT_EQ(caption(1), "Headset: unknown");
}

TEST_F(TrueRows, TellWhatWasSetElsewhereOnceTheyAreLetGo) {
    present();
    hold(0);
    drag(0, -30);
    const std::string held = caption(0);
    changeElsewhere("Ringtone", 0.9F);
    EXPECT_EQ(caption(0), held) << "the hand comes first";
    release(0);
    EXPECT_EQ(caption(0), "Bell: 90%");
    EXPECT_EQ(slider(0)->value(), 90);
}

TEST_F(TrueRows, TellWhatWasSetElsewhereAfterACancelledTouchToo) {
    present();
    hold(0);
    changeElsewhere("Ringtone", 0.9F);
    window->cancelTouches();
    NSRunLoop::mainRunLoop().runDue();
    EXPECT_EQ(caption(0), "Bell: 90%");
}

TEST_F(TrueRows, StayWhereTheHandHasLeftThem) {
    present();
    hold(0);
    drag(0, 37);
    const float left = slider(0)->value();
    const std::string said = caption(0);
    release(0);
    EXPECT_EQ(slider(0)->value(), left);
    EXPECT_EQ(caption(0), said);
}

TEST_F(TrueRows, AreNotReadWhileOneOfThemIsHeld) {
    present();
    hold(0);
    drag(0, 25);
    hold(2);
    const float held = slider(2)->value();
    device->setReadable("HeadphonesBT", false);
    widget->readAgain();
    EXPECT_EQ(slider(2)->value(), held);
    EXPECT_EQ(caption(2), "Headphones: 50%");
    release(0);
    EXPECT_EQ(slider(2)->value(), held) << "another finger holds it";
    EXPECT_EQ(caption(2), "Headphones: 50%");
    release(2);
    EXPECT_EQ(caption(2), "Headphones: unknown");
    EXPECT_EQ(slider(2)->value(), 0);
}

TEST_F(TrueRows, OfTheSameCategoryAreBothTrue) {
    files.writeCategories({{"Ringtone", "Bell"}, {"Ringtone", "Bell again"}});
    present();
    hold(1);
    changeElsewhere("Ringtone", 0.2F);
    release(1);
    EXPECT_EQ(caption(0), "Bell: 20%");
    EXPECT_EQ(caption(1), "Bell again: 20%");
}

TEST_F(TrueRows, TellTheirSlidersWhetherTheyCanBeRead) {
    device->setReadable("HeadsetBT", false);
    present();
    EXPECT_TRUE(slider(0)->isValueKnown());
    EXPECT_FALSE(slider(1)->isValueKnown());
    EXPECT_TRUE(slider(2)->isValueKnown());
    device->setReadable("HeadsetBT", true);
    changeElsewhere("HeadsetBT", 0.3F);
    EXPECT_TRUE(slider(1)->isValueKnown()) << "the announcement says so";
    device->setReadable("HeadphonesBT", false);
    widget->readAgain();
    EXPECT_FALSE(slider(2)->isValueKnown());
}

TEST_F(TrueRows, HaveTheirCategoriesFromTheFileAndItsHiddenRecordsCount) {
    files.writeCategories({{"Ringtone", "Bell", test::Row::Hidden},
                           {"HeadsetBT", "Headset"},
                           {"PhoneCall", "Calls"}});
    device->setReadable("Ringtone", false);
    device->setReadable("PhoneCall", false);
    present();
    EXPECT_TRUE(slider(1)->isValueKnown());
    EXPECT_FALSE(slider(2)->isValueKnown());
}

TEST_F(TrueRows, AreFoundAnewAtEachPresentation) {
    present();
    widget->dismiss();
    files.writeCategories({{"HeadsetBT", "Headset"}});
    device->setReadable("HeadsetBT", false);
    widget->present();
    EXPECT_FALSE(slider(0)->isValueKnown());
    step(0, 1);
    EXPECT_EQ(caption(0), "Headset: unknown");
}

TEST_F(TrueRows, AreKnownWithoutAFileByTheInitialList) {
    std::filesystem::remove(files.categoryFile());
    device->setReadable("VideoConference", false);
    present();
    std::filesystem::remove(files.categoryFile());
    widget->readAgain();
    EXPECT_FALSE(slider(4)->isValueKnown());
    EXPECT_TRUE(slider(3)->isValueKnown());
}

TEST_F(TrueRows, AreNotTakenForWhatTheFileSaysOfOthers) {
    present();
    files.writeCategories({{"Nothing", "Something else"}});
    shell::RowKeeper keeper([] {});
    keeper.follow(widget->view());
    EXPECT_TRUE(keeper.rows().empty());
    EXPECT_TRUE(slider(0)->isValueKnown());
}

TEST_F(TrueRows, SurviveTheirWidgetsEndInTheMiddleOfADrag) {
    present();
    hold(0);
    changeElsewhere("Ringtone", 0.9F);
    widget->readAgain();
    widget.reset();
    window->cancelTouches();
    NSRunLoop::mainRunLoop().runDue();
    EXPECT_TRUE(window->subviews().front()->viewWithTag(2000) == nullptr);
}

}  // namespace
