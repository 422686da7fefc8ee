#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIView.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "shells/panel/ScrollingView.hpp"
#include "tests/support/MixerFiles.hpp"
#include "tests/support/VirtualClock.hpp"

#include <gtest/gtest.h>

using namespace shell;

namespace {

using Log = std::vector<std::string>;

/// Keeps what its host asks of it, and answers with a size that a test sets.
class RecordingController : public _SBUIWidgetViewController {
 public:
    explicit RecordingController(Log& log) : log_(log) {}
    ~RecordingController() override { log_.emplace_back("destroyed"); }
    void loadView() override {
        log_.emplace_back("load");
        setView(std::make_shared<UIView>());
    }
    CGSize preferredViewSize() override {
        ++asked;
        parentWidth = parentViewController()->view()->frame().size.width;
        return size;
    }
    void hostWillPresent() override {
        log_.emplace_back("present");
        if (tellsItsSize) widgetHost()->delegate()->widget(widgetHost(), size);
    }
    void hostDidDismiss() override { log_.emplace_back("dismiss"); }
    bool respondsToSelector(std::string_view selector) const override {
        return updatesValues && selector == "updateValues";
    }
    std::optional<PropertyValue> performSelector(
        std::string_view selector, std::span<const PropertyValue> /*arguments*/) override {
        log_.emplace_back(selector);
        return PropertyValue();
    }

    CGSize size = {560, 270};
    CGFloat parentWidth = 0;
    bool tellsItsSize = false;
    bool updatesValues = false;
    int asked = 0;

 private:
    Log& log_;
};

class HostedWidgetTest : public testing::Test {
 protected:
    HostedWidgetTest() {
        widget->setSizeHandler([this] { ++sizeChanges; });
    }

    VirtualClock clock;
    Log log;
    std::shared_ptr<RecordingController> controller = std::make_shared<RecordingController>(log);
    std::unique_ptr<HostedWidget> widget = std::make_unique<HostedWidget>(controller, 768);
    int sizeChanges = 0;
};

}  // namespace

TEST(ParentWidth, IsAHandheldsOrALargerScreens) {
    for (const char* handheld : {"iPhone", "iPhone6,1", "iPod5,1"})
        EXPECT_EQ(parentWidthForModel(handheld), 320) << handheld;
    for (const char* larger : {"iPad", "iPad4,1", "", "AppleTV", "iphone"})
        EXPECT_EQ(parentWidthForModel(larger), 768) << larger;
}

TEST(ParentWidth, IsNoMoreThanThereIsRoomFor) {
    EXPECT_EQ(parentWidthForModel("iPad4,1", 1280), 768);
    EXPECT_EQ(parentWidthForModel("iPad4,1", 768), 768);
    EXPECT_EQ(parentWidthForModel("iPad4,1", 767), 560) << "not wider than on a larger screen";
    EXPECT_EQ(parentWidthForModel("iPad4,1", 320.5), 320);
    EXPECT_EQ(parentWidthForModel("iPhone6,1", 1280), 320);
    EXPECT_EQ(parentWidthForModel("iPhone6,1", 240), 240);
    EXPECT_EQ(parentWidthForModel("iPhone6,1", -5), 1);
}

TEST_F(HostedWidgetTest, LoadsItsViewOnceWhenItIsFirstAskedFor) {
    EXPECT_EQ(log, Log{});
    const auto view = widget->view();
    EXPECT_EQ(widget->view(), view);
    EXPECT_EQ(log, Log{"load"});
}

TEST_F(HostedWidgetTest, AsksForTheSizeOnceUnderItsParentAndAfterTheViewIsLoaded) {
    EXPECT_EQ(widget->preferredSize(), (CGSize{560, 270}));
    EXPECT_EQ(log, Log{"load"});
    EXPECT_EQ(controller->parentWidth, 768);
    controller->size = {1, 1};
    EXPECT_EQ(widget->preferredSize(), (CGSize{560, 270}));
    EXPECT_EQ(controller->asked, 1);
}

TEST_F(HostedWidgetTest, AsksForTheSizeAgainUnderAParentOfAnotherWidth) {
    widget->preferredSize();
    widget->setParentWidth(360);
    controller->size = {360, 270};
    EXPECT_EQ(widget->preferredSize(), (CGSize{360, 270}));
    EXPECT_EQ(controller->parentWidth, 360);
    widget->setParentWidth(360);
    widget->preferredSize();
    EXPECT_EQ(controller->asked, 2) << "the width is the same";
}

TEST_F(HostedWidgetTest, TellsOfPresentationAndDismissalInTurns) {
    widget->dismiss();
    EXPECT_EQ(log, Log{});
    widget->present();
    EXPECT_TRUE(widget->isPresented());
    widget->present();
    EXPECT_EQ(log, (Log{"load", "present"}));
    widget->dismiss();
    EXPECT_FALSE(widget->isPresented());
    widget->dismiss();
    widget->present();
    EXPECT_EQ(log, (Log{"load", "present", "dismiss", "present"}));
}

TEST_F(HostedWidgetTest, ReadsItsVolumesAgainWithoutANewPresentation) {
    controller->updatesValues = true;
    widget->readAgain();
    EXPECT_EQ(log, Log{}) << "it is not presented";
    widget->present();
    widget->readAgain();
    EXPECT_EQ(log, (Log{"load", "present", "updateValues"}));
}

TEST_F(HostedWidgetTest, IsPresentedAnewToReadItsVolumesWhereItKnowsNoOtherWay) {
    widget->present();
    widget->readAgain();
    EXPECT_EQ(log, (Log{"load", "present", "dismiss", "present"}));
}

TEST_F(HostedWidgetTest, DismissesAWidgetThatIsStillPresentedAtItsEnd) {
    widget->present();
    widget.reset();
    EXPECT_EQ(log.back(), "dismiss");
    log.clear();
    widget = std::make_unique<HostedWidget>(controller, 320);
    widget.reset();
    EXPECT_EQ(log, Log{}) << "it was not presented";
}

TEST_F(HostedWidgetTest, MakesTheContainerAsLargeAsTheWidgetSays) {
    controller->tellsItsSize = true;
    widget->present();
    EXPECT_EQ(widget->view()->frame().size, (CGSize{560, 270}));
    EXPECT_EQ(sizeChanges, 1);
    widget->dismiss();
    controller->size = {560, 170};
    widget->present();
    EXPECT_EQ(widget->view()->frame().size, (CGSize{560, 170}));
    EXPECT_EQ(widget->preferredSize(), (CGSize{560, 170}));
    EXPECT_EQ(sizeChanges, 2);
}

TEST_F(HostedWidgetTest, TellsOfASizeOnlyWhenItIsAnother) {
    controller->tellsItsSize = true;
    widget->present();
    widget->dismiss();
    widget->present();
    EXPECT_EQ(sizeChanges, 1);
}

TEST_F(HostedWidgetTest, AsksAgainLaterWhenTheSizeIsInvalid) {
    widget->preferredSize();
    controller->size = {560, 320};
    controller->widgetHost()->invalidatePreferredViewSize();
    EXPECT_EQ(controller->asked, 1) << "not from inside the widget's call";
    NSRunLoop::mainRunLoop().runDue();
    EXPECT_EQ(widget->preferredSize(), (CGSize{560, 320}));
    EXPECT_EQ(sizeChanges, 1);
}

TEST_F(HostedWidgetTest, AnswersToTheSelectorsThatAWidgetAsksFor) {
    const auto host = controller->widgetHost();
    EXPECT_TRUE(host->respondsToSelector("invalidatePreferredViewSize"));
    EXPECT_TRUE(host->delegate()->respondsToSelector("widget:didUpdatePreferredSize:"));
    EXPECT_FALSE(host->respondsToSelector("widget:didUpdatePreferredSize:"));
    EXPECT_FALSE(host->delegate()->respondsToSelector("invalidatePreferredViewSize"));
}

TEST_F(HostedWidgetTest, FallsSilentForAWidgetThatOutlivesIt) {
    const auto host = controller->widgetHost();
    host->invalidatePreferredViewSize();
    widget.reset();
    host->invalidatePreferredViewSize();
    host->delegate()->widget(host, {1, 1});
    NSRunLoop::mainRunLoop().runDue();
    EXPECT_EQ(controller->asked, 0);
    EXPECT_EQ(sizeChanges, 0);
}

TEST_F(HostedWidgetTest, LetsItsWidgetGo) {
    widget->present();
    controller.reset();
    widget.reset();
    EXPECT_EQ(log, (Log{"load", "present", "dismiss", "destroyed"}));
}

namespace {

/// The real widget, from its bundle.
class HostedMixerTest : public testing::Test {
 protected:
    HostedMixerTest() {
        shell::installBackends();
        setLogSink([](const std::string&) {});
        setPreferencesDirectory(files.folder().string());
        setMachineModel("iPad4,1");
        AVSystemController::setSharedAVSystemController(device);
        const auto created = shell::createController(TARNWICK_BUNDLE_DIR);
        EXPECT_TRUE(created) << created.error();
        widget = std::make_unique<HostedWidget>(*created, 768);
    }
    ~HostedMixerTest() override {
        widget.reset();
        AVSystemController::setSharedAVSystemController(nullptr);
        setPreferencesDirectory("");
        setLogSink({});
    }
    std::vector<std::string> captions() {
        std::vector<std::string> found;
        for (const auto& element : accessibilityElements(widget->view()))
            if (element->className() == "UISlider")
                found.push_back(element->accessibilityLabel().value_or("nil"));
        return found;
    }

    std::vector<std::shared_ptr<UISlider>> sliders() {
        std::vector<std::shared_ptr<UISlider>> found;
        for (const auto& element : accessibilityElements(widget->view()))
            if (auto slider = std::dynamic_pointer_cast<UISlider>(element))
                found.push_back(std::move(slider));
        return found;
    }

    VirtualClock clock;
    test::MixerFiles files;
    std::shared_ptr<SimulatedAudioDevice> device = std::make_shared<SimulatedAudioDevice>();
    std::unique_ptr<HostedWidget> widget;
};

}  // namespace

TEST_F(HostedMixerTest, HasNoRowsWhileItIsDismissed) {
    widget->present();
    EXPECT_EQ(captions().size(), 5U);
    widget->dismiss();
    EXPECT_EQ(captions().size(), 0U);
    widget->present();
    EXPECT_EQ(captions().size(), 5U);
}

TEST_F(HostedMixerTest, ReadsBothFilesAnewAtEachPresentation) {
    widget->present();
    EXPECT_EQ(widget->preferredSize(), (CGSize{560, 270}));
    widget->dismiss();
    files.writeCategories({{"PhoneCall", "Calls"}, {"Ringtone", "Bell"}});
    files.writeSettings("<key>displayPercentage</key><false/>");
    widget->present();
    EXPECT_EQ(captions(), (std::vector<std::string>{"Calls (Speaker)", "Bell"}));
    EXPECT_EQ(widget->preferredSize(), (CGSize{560, 120}));
    EXPECT_EQ(widget->view()->frame().size, (CGSize{560, 120}));
}

TEST_F(HostedMixerTest, SurvivesFilesThatWereSpoiledMeanwhile) {
    widget->present();
    widget->dismiss();
    test::MixerFiles::write(files.categoryFile(), "no property list");
    test::MixerFiles::write(files.settingsFile(), std::string(100, '\0'));
    widget->present();
    EXPECT_EQ(captions().size(), 5U) << "the initial list again";
}

TEST_F(HostedMixerTest, FollowsTheDeviceOnlyWhileItIsPresented) {
    widget->present();
    device->changeVolume("Ringtone", 0.25F);
    NSRunLoop::mainRunLoop().runDue();
    EXPECT_EQ(captions().at(0), "Ringtone: 25%");
    widget->dismiss();
    device->changeVolume("Ringtone", 0.75F);
    NSRunLoop::mainRunLoop().runDue();
    widget->present();
    EXPECT_EQ(captions().at(0), "Ringtone: 75%");
}

TEST_F(HostedMixerTest, AssemblesItselfAgainAndKeepsTheFocusInItsRow) {
    const auto window = std::make_shared<UIWindow>();
    widget->present();
    window->setFrame({{0, 0}, widget->preferredSize()});
    window->addSubview(widget->view());
    window->setFocusedView(sliders().at(0));
    files.writeCategories({{"PhoneCall", "Calls"}, {"Ringtone", "Bell"}});
    widget->assembleAgain();
    EXPECT_EQ(captions(), (std::vector<std::string>{"Calls (Speaker): 50%", "Bell: 50%"}));
    EXPECT_EQ(window->focusedView(), sliders().at(1));
    files.writeCategories({{"PhoneCall", "Calls"}});
    widget->assembleAgain();
    EXPECT_EQ(window->focusedView(), nullptr) << "its row is gone";
}

TEST_F(HostedMixerTest, AssemblesItselfAgainWhereItIsScrolledTo) {
    constexpr CGFloat seen = 120;
    constexpr CGFloat scrolled = 100;
    const auto window = std::make_shared<UIWindow>();
    const auto scroller = std::make_shared<ScrollingView>();
    widget->present();
    window->setFrame({{0, 0}, {560, seen}});
    window->addSubview(scroller);
    scroller->setFrame(window->bounds());
    scroller->setContent(widget->view());
    window->layoutIfNeeded();
    scroller->scrollBy(scrolled);
    files.writeCategories({{"PhoneCall", "Calls"},
                           {"Ringtone", "Bell"},
                           {"Audio/Video", "Music"},
                           {"HeadsetBT", "Headset"},
                           {"HeadphonesBT", "Headphones"}});
    widget->assembleAgain();
    window->layoutIfNeeded();
    EXPECT_EQ(captions().front(), "Calls (Speaker): 50%");
    EXPECT_EQ(scroller->offset(), scrolled);
}

TEST_F(HostedMixerTest, AssemblesItselfAgainOnlyWhenNoSliderIsHeld) {
    const auto window = std::make_shared<UIWindow>();
    widget->present();
    window->setFrame({{0, 0}, widget->preferredSize()});
    window->addSubview(widget->view());
    const auto held = sliders().at(0);
    const CGRect thumb = held->thumbRect();
    const CGPoint middle =
        held->convertPointToView({CGRectGetMidX(thumb), CGRectGetMidY(thumb)}, window.get());
    window->sendTouch(UITouchPhase::Began, middle);
    ASSERT_TRUE(held->isTracking());
    files.writeCategories({{"Ringtone", "Bell"}});
    widget->assembleAgain();
    EXPECT_EQ(captions().size(), 5U);
    window->sendTouch(UITouchPhase::Ended, middle);
    NSRunLoop::mainRunLoop().runDue();
    EXPECT_EQ(captions().size(), 1U);
}
