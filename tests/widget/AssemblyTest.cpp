#include "tests/widget/WidgetFixture.hpp"

namespace {

using Lines = std::vector<std::string>;

class Assembly : public WidgetTest {
 protected:
    static std::vector<CGFloat> rowPositions(const UIView& view) {
        std::vector<CGFloat> result;
        for (const auto& row : view.subviews())
            result.push_back(row->frame().origin.y);
        return result;
    }
    const std::string logging = "<key>enableDebugLogging</key><true/>";
    const std::string loadLine = "TW: loadFullViewWithResourcesBundle";
    const std::string addLine = "TW: adding volume observer...";
    const std::string removeLine = "TW: removing volume observer...";
};

}  // namespace

TEST_F(Assembly, StartsFromZeroedVariables) {
    const auto mixer = newMixer();
    EXPECT_EQ(mixer->_backgroundImageView, nullptr);
    EXPECT_TRUE(mixer->categories.empty());
    EXPECT_EQ(mixer->avs, nullptr);
    EXPECT_EQ(mixer->resourcesBundle, nullptr);
    EXPECT_EQ(mixer->thumbTintColor, std::nullopt);
    EXPECT_EQ(mixer->minimumTrackTintColor, std::nullopt);
    EXPECT_EQ(mixer->maximumTrackTintColor, std::nullopt);
    EXPECT_EQ(mixer->textColor, std::nullopt);
    EXPECT_EQ(mixer->selectedSkin, std::nullopt);
    EXPECT_FALSE(mixer->bindRingerAndAVVolumes || mixer->displayPercentage || mixer->isIpad ||
                 mixer->isIpod || mixer->enableDebugLogging);
    EXPECT_EQ(mixer->widgetWidth, 0.0F);
}

TEST_F(Assembly, PlacesFiveRowsFlushUnderEachOther) {
    const auto mixer = assembledMixer(320);
    EXPECT_EQ(rowPositions(*mixer), (std::vector<CGFloat>{10, 60, 110, 160, 210}));
    for (const auto& row : mixer->subviews()) {
        EXPECT_EQ(row->frame().origin.x, 0);
        EXPECT_EQ(row->frame().size, (CGSize{320, 50}));
        EXPECT_EQ(row->tag(), 0);
    }
    EXPECT_EQ(mixer->resourcesBundle, bundle);
    EXPECT_EQ(mixer->avs, service);
}

TEST_F(Assembly, LeavesNoGapForAHiddenCategoryButItsNumber) {
    writeCategories(record("A", "a") + record("B", "b", "<false/>") + record("C", "c"));
    const auto mixer = assembledMixer();
    EXPECT_EQ(rowPositions(*mixer), (std::vector<CGFloat>{10, 60}));
    EXPECT_EQ(mixer->categories.size(), 3U);
    EXPECT_NE(mixer->slider(0), nullptr);
    EXPECT_EQ(mixer->slider(1), nullptr);
    EXPECT_EQ(mixer->caption(1), nullptr);
    ASSERT_NE(mixer->slider(2), nullptr);
    EXPECT_EQ(mixer->slider(2)->superview(), mixer->subviews().at(1));
    EXPECT_EQ(mixer->caption(2)->superview(), mixer->subviews().at(1));
}

TEST_F(Assembly, GivesARowToAVisibleRecordWithoutAName) {
    writeCategories("<dict><key>visible</key><true/></dict>");
    const auto mixer = assembledMixer();
    EXPECT_EQ(mixer->subviews().size(), 1U);
    EXPECT_EQ(mixer->captionText(0), "(null): unknown");
}

TEST_F(Assembly, ShowsNothingForAnEmptyOrHiddenListButListens) {
    for (const std::string& records : {std::string(), record("A", "a", "<false/>")}) {
        writeCategories(records);
        log.clear();
        const auto mixer = assembledMixer();
        EXPECT_TRUE(mixer->subviews().empty());
        announce("Other", 0.5);
        EXPECT_EQ(timesLogged("TW: unable to match category Other to TW categories list, GUI not "
                              "updated!"),
                  1U);
        NSNotificationCenter::defaultCenter().removeObserver(mixer.get());
    }
}

TEST_F(Assembly, TakesTheRowWidthFromTheSuperviewInSinglePrecision) {
    const auto mixer = assembledMixer(320.1);
    EXPECT_EQ(mixer->widgetWidth, 320.1F);
    EXPECT_EQ(mixer->subviews().at(0)->frame().size.width, static_cast<CGFloat>(320.1F));
}

TEST_F(Assembly, WithoutASuperviewMakesRowsOfNoWidth) {
    const auto mixer = std::make_shared<MixerUnderTest>(CGRectMake(0, 0, 320, 270));
    assemble(*mixer);
    EXPECT_EQ(mixer->widgetWidth, 0.0F);
    EXPECT_EQ(mixer->subviews().size(), 5U);
    EXPECT_EQ(mixer->subviews().at(4)->frame(), CGRectMake(0, 210, 0, 50));
}

TEST_F(Assembly, IsNotUndoneByALaterChangeOfTheSuperviewsWidth) {
    const auto mixer = assembledMixer(320);
    parent->setFrame(CGRectMake(0, 0, 500, 300));
    parent->layoutIfNeeded();
    mixer->layoutSubviews();
    EXPECT_EQ(mixer->subviews().at(0)->frame().size.width, 320);
    EXPECT_EQ(mixer->slider(0)->frame().size.width, 280);
}

TEST_F(Assembly, FillsTheRowsFromTheService) {
    service->volumes["Ringtone"] = 0.25F;
    const auto mixer = assembledMixer();
    EXPECT_EQ(mixer->slider(0)->value(), 25.0F);
    EXPECT_EQ(mixer->captionText(0), "Ringtone: 25%");
    EXPECT_EQ(mixer->captionText(1), "Audio/Video (Speaker): 50%");
}

TEST_F(Assembly, ListensToTheServiceWhoeverPosts) {
    const auto mixer = assembledMixer();
    announce("Ringtone", 0.75);
    EXPECT_EQ(mixer->slider(0)->value(), 75.0F);
    NSNotificationCenter::defaultCenter().postNotificationName(
        "AVSystemController_EffectiveVolumeDidChangeNotification", parent.get(),
        PropertyValue(PropertyValue::Dictionary{
            {"AVSystemController_EffectiveVolumeNotificationParameter_Category",
             PropertyValue("Ringtone")},
            {"AVSystemController_EffectiveVolumeNotificationParameter_Volume",
             PropertyValue(0.125)}}));
    EXPECT_EQ(mixer->slider(0)->value(), 12.5F);
}

TEST_F(Assembly, KeepsTheServiceOfTheFirstOne) {
    const auto mixer = assembledMixer();
    AVSystemController::setSharedAVSystemController(std::make_shared<ScriptedService>());
    mixer->removeAll();
    assemble(*mixer);
    EXPECT_EQ(mixer->avs, service);
}

TEST_F(Assembly, AsksForTheServiceAgainWhenThereWasNone) {
    AVSystemController::setSharedAVSystemController(nullptr);
    const auto mixer = assembledMixer();
    EXPECT_EQ(mixer->avs, nullptr);
    EXPECT_EQ(mixer->captionText(0), "Ringtone: unknown");
    EXPECT_EQ(mixer->captionText(1), "Audio/Video ((null)): unknown");
    mixer->slider(0)->setValueFromUser(40);
    EXPECT_EQ(mixer->captionText(0), "Ringtone: 40%");
    AVSystemController::setSharedAVSystemController(service);
    mixer->removeAll();
    assemble(*mixer);
    EXPECT_EQ(mixer->avs, service);
    EXPECT_EQ(mixer->captionText(0), "Ringtone: 50%");
}

TEST_F(Assembly, LogsItsFirstLineOnlyWithTheFlagOfTheAssemblyBefore) {
    struct Step {
        bool loggingInFile;
        Lines expected;
    };
    const Lines updating = {"TW: updating category A"};
    writeCategories(record("A", "a"));
    const auto mixer = newMixer();
    const std::string got = "TW: got 1 categories";
    const std::vector<Step> steps = {
        {true, {removeLine, got, updating[0], addLine}},  // First: the flag was still off.
        {true, {removeLine, loadLine, got, updating[0], addLine}},
        {false, {removeLine, loadLine}},
        {false, {}},
        {true, {got, updating[0], addLine}},
    };
    for (std::size_t i = 0; i < steps.size(); ++i) {
        writeSettings(steps[i].loggingInFile ? logging : "");
        log.clear();
        mixer->removeAll();
        assemble(*mixer);
        Lines expected = steps[i].expected;
        if (i == 0) expected.erase(expected.begin());  // Nothing was assembled, the flag is off.
        EXPECT_EQ(log, expected) << i;
    }
}

TEST_F(Assembly, OfAnAssembledViewDuplicatesRowsAndRegistration) {
    writeSettings(logging);
    const auto mixer = assembledMixer();
    assemble(*mixer);
    EXPECT_EQ(rowPositions(*mixer),
              (std::vector<CGFloat>{10, 60, 110, 160, 210, 10, 60, 110, 160, 210}));
    log.clear();
    announce("Ringtone", 0.25);
    EXPECT_EQ(timesLogged("TW: VolumeChangedNotification for category Ringtone, new volume is "
                          "0.250000"),
              2U);
}

TEST_F(Assembly, IsClearedOfEverySubviewAndEveryRegistration) {
    const auto mixer = assembledMixer();
    mixer->addSubview(std::make_shared<UIView>(CGRectMake(0, 0, 1, 1)));
    NSNotificationCenter::defaultCenter().addObserver(
        std::static_pointer_cast<TarnwickView>(mixer),
        &TarnwickView::receiveVolumeChangedNotification, "another name", nullptr);
    mixer->removeAll();
    EXPECT_TRUE(mixer->subviews().empty());
    log.clear();
    announce("No such category", 0.5);
    NSNotificationCenter::defaultCenter().postNotificationName("another name", nullptr);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(mixer->superview(), parent);
    EXPECT_EQ(mixer->categories.size(), 5U);
    EXPECT_EQ(mixer->avs, service);
    EXPECT_EQ(mixer->resourcesBundle, bundle);
    EXPECT_EQ(mixer->widgetWidth, 320.0F);
}

TEST_F(Assembly, AfterClearingShowsEditsOfBothFiles) {
    const auto mixer = assembledMixer();
    mixer->removeAll();
    writeSettings("<key>displayPercentage</key><false/>");
    writeCategories(record("PhoneCall", "Calls"));
    assemble(*mixer);
    EXPECT_EQ(mixer->subviews().size(), 1U);
    EXPECT_EQ(mixer->captionText(0), "Calls (Speaker)");
}

TEST_F(Assembly, TakesNoBackgroundImage) {
    const auto mixer = assembledMixer();
    const auto image =
        UIImage::imageWithContentsOfFile(bundle->pathForResource("thumb_metal", "png"));
    ASSERT_NE(image, nullptr);
    mixer->setBackgroundImage(image);
    mixer->setBackgroundImage(nullptr);
    EXPECT_EQ(mixer->_backgroundImageView, nullptr);
    EXPECT_EQ(mixer->subviews().size(), 5U);
}

TEST_F(Assembly, LogsTheViewsEndOnlyWhenLoggingIsOn) {
    for (bool on : {true, false}) {
        writeSettings(on ? logging : "");
        auto mixer = assembledMixer();
        mixer->removeAll();
        parent = nullptr;
        log.clear();
        mixer = nullptr;
        EXPECT_EQ(log, on ? Lines{"TW: view dealloc"} : Lines{}) << on;
    }
}

TEST_F(Assembly, DestroyedWithoutClearingLeavesNothingThatListens) {
    auto mixer = assembledMixer();
    parent = nullptr;
    mixer = nullptr;
    log.clear();
    announce("No such category", 0.5);
    EXPECT_TRUE(log.empty());
}
