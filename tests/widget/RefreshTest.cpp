#include "tests/widget/WidgetFixture.hpp"

namespace {
using Refresh = WidgetTest;
}

TEST_F(Refresh, FetchesTheServiceWhenItIsMissing) {
    const auto mixer = assembledMixer();
    mixer->avs = nullptr;
    mixer->updateValues();
    EXPECT_EQ(mixer->avs, service);
}

TEST_F(Refresh, OfAnEmptyListStillFetchesTheService) {
    const auto mixer = newMixer();
    mixer->updateValues();
    EXPECT_EQ(mixer->avs, service);
    EXPECT_TRUE(service->volumesAsked.empty());
}

TEST_F(Refresh, SetsVisibleRowsThroughTheirOwnNumbers) {
    writeCategories(record("A", "a") + record("B", "b", "<false/>") + record("C", "c"));
    service->volumes["A"] = 0.1F;
    service->volumes["B"] = 0.2F;
    service->volumes["C"] = 0.3F;
    const auto mixer = assembledMixer();
    EXPECT_EQ(mixer->slider(0)->value(), 0.1F * 100.0F);
    EXPECT_EQ(mixer->slider(2)->value(), 0.3F * 100.0F);
    EXPECT_EQ(mixer->captionText(0), "a: 10%");
    EXPECT_EQ(mixer->captionText(2), "c: 30%");
    EXPECT_EQ(service->volumesAsked, (std::vector<NSString>{"A", "C"}));
}

TEST_F(Refresh, LogsEachVisibleCategoryWhenLoggingIsOn) {
    writeCategories(record("A", "a") + record("B", "b", "<false/>") +
                    "<dict><key>visible</key><true/></dict>");
    const auto mixer = assembledMixer();
    log.clear();
    mixer->updateValues();
    EXPECT_TRUE(log.empty());
    mixer->enableDebugLogging = true;
    mixer->updateValues();
    EXPECT_EQ(
        log, (std::vector<std::string>{"TW: updating category A", "TW: updating category (null)"}));
}

TEST_F(Refresh, SetsTheValueEvenWhenItStandsThereAlready) {
    const auto mixer = assembledMixer();
    const auto slider = mixer->slider(0);
    slider->setValue(90);
    slider->setValue(50, Animated::Yes);
    ASSERT_TRUE(slider->isAnimating());
    mixer->updateValues();
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_EQ(slider->value(), 50.0F);
}

TEST_F(Refresh, OfAnUnreadableCategoryAnimatesToZeroAndSaysUnknown) {
    for (const char* percentage : {"<true/>", "<false/>"}) {
        writeSettings(std::string("<key>displayPercentage</key>") + percentage);
        service->volumes["Audio/Video"] = 0.5F;
        service->volumes["Ringtone"] = 0.5F;
        const auto mixer = assembledMixer();
        service->volumes.erase("Audio/Video");
        service->volumes.erase("Ringtone");
        service->volumes["HeadsetBT"] = 0.75F;
        service->routesAsked.clear();
        mixer->updateValues();
        EXPECT_EQ(mixer->captionText(1), "Audio/Video (Speaker): unknown");
        EXPECT_EQ(mixer->captionText(0), "Ringtone: unknown");
        for (NSInteger number : {0, 1}) {
            EXPECT_EQ(mixer->slider(number)->value(), 0.0F);
            EXPECT_TRUE(mixer->slider(number)->isAnimating());
        }
        EXPECT_EQ(service->routesAsked, (std::vector<NSString>{"Audio/Video", "PhoneCall"}));
        EXPECT_EQ(mixer->slider(2)->value(), 75.0F);  // The other rows are still refreshed.
        NSNotificationCenter::defaultCenter().removeObserver(mixer.get());
    }
}

TEST_F(Refresh, HidesPercentagesWhenTheyAreOff) {
    writeSettings("<key>displayPercentage</key><false/>");
    const auto mixer = assembledMixer();
    EXPECT_EQ(mixer->captionText(0), "Ringtone");
    EXPECT_EQ(mixer->captionText(1), "Audio/Video (Speaker)");
    EXPECT_EQ(mixer->slider(0)->value(), 50.0F);
}

TEST_F(Refresh, ShowsBothEndsOfTheScale) {
    service->volumes["Ringtone"] = 0.0F;
    service->volumes["HeadsetBT"] = 1.0F;
    const auto mixer = assembledMixer();
    EXPECT_EQ(mixer->captionText(0), "Ringtone: 0%");
    EXPECT_EQ(mixer->captionText(2), "BT Headset: 100%");
    EXPECT_EQ(mixer->slider(2)->value(), 100.0F);
}

TEST_F(Refresh, HasNoRowToFillForAListChangedSinceItsRowsWereBuilt) {
    const auto mixer = assembledMixer();
    mixer->categories.emplace_back("Late", "Late");
    EXPECT_NO_THROW(mixer->updateValues());
    EXPECT_EQ(mixer->subviews().size(), 5U);
}
