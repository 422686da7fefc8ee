#include "tests/widget/WidgetFixture.hpp"

#include <stdexcept>

namespace {

using Lines = std::vector<std::string>;

class VolumeNotification : public WidgetTest {
 protected:
    void bind(const std::string& more = "") {
        writeSettings("<key>bindRingerAndAV</key><true/>" + more);
    }
    const std::string logging = "<key>enableDebugLogging</key><true/>";
    static std::string changed(const std::string& category, const std::string& volume) {
        return "TW: VolumeChangedNotification for category " + category + ", new volume is " +
               volume;
    }
    static std::string unmatched(const std::string& category) {
        return "TW: unable to match category " + category +
               " to TW categories list, GUI not updated!";
    }
};

}  // namespace

TEST_F(VolumeNotification, MovesTheMatchingRowOnly) {
    const auto mixer = assembledMixer();
    log.clear();
    announce("HeadsetBT", 0.25);
    EXPECT_EQ(mixer->slider(2)->value(), 25.0F);
    EXPECT_EQ(mixer->captionText(2), "BT Headset: 25%");
    for (NSInteger other : {0, 1, 3, 4})
        EXPECT_EQ(mixer->slider(other)->value(), 50.0F);
    EXPECT_TRUE(service->sets.empty());
    EXPECT_TRUE(log.empty());
}

TEST_F(VolumeNotification, LogsCategoryAndVolumeWithSixDecimals) {
    writeSettings(logging);
    const auto mixer = assembledMixer();
    log.clear();
    announce("Ringtone", 0.376);
    EXPECT_EQ(log, Lines{changed("Ringtone", "0.376000")});
}

TEST_F(VolumeNotification, OfAnUnknownCategoryIsLoggedWhateverTheSetting) {
    const auto mixer = assembledMixer();
    for (const char* category : {"Alarm", "ringtone", "Ringtone ", ""}) {
        log.clear();
        announce(category, 0.1);
        EXPECT_EQ(log, Lines{unmatched(category)});
    }
    for (NSInteger number = 0; number < 5; ++number)
        EXPECT_EQ(mixer->slider(number)->value(), 50.0F);
}

TEST_F(VolumeNotification, OfAnEmptyListIsAlwaysUnmatched) {
    writeCategories("");
    const auto mixer = assembledMixer();
    announce("Ringtone", 0.1);
    EXPECT_EQ(log, Lines{unmatched("Ringtone")});
}

TEST_F(VolumeNotification, WithoutACategoryMatchesNoRecord) {
    writeSettings(logging);
    writeCategories("<dict><key>visible</key><true/></dict>" + record("A", "a"));
    const auto mixer = assembledMixer();
    log.clear();
    announce(std::nullopt, 0.5);
    EXPECT_EQ(log, (Lines{changed("(null)", "0.500000"), unmatched("(null)")}));
}

TEST_F(VolumeNotification, WithoutAVolumeCountsAsSilence) {
    const auto mixer = assembledMixer();
    announce("Ringtone", std::nullopt);
    EXPECT_EQ(mixer->slider(0)->value(), 0.0F);
    EXPECT_EQ(mixer->captionText(0), "Ringtone: 0%");
}

TEST_F(VolumeNotification, WithoutUserInformationMatchesNothing) {
    const auto mixer = assembledMixer();
    log.clear();
    NSNotificationCenter::defaultCenter().postNotificationName(
        "AVSystemController_EffectiveVolumeDidChangeNotification", nullptr);
    EXPECT_EQ(log, Lines{unmatched("(null)")});
}

TEST_F(VolumeNotification, OfACategoryThatStandsTwiceMovesTheFirst) {
    writeCategories(record("A", "one") + record("A", "two"));
    const auto mixer = assembledMixer();
    announce("A", 0.5);
    EXPECT_EQ(mixer->slider(0)->value(), 50.0F);
    EXPECT_EQ(mixer->slider(1)->value(), 0.0F);
}

TEST_F(VolumeNotification, OfAHiddenFirstMatchMovesNoSecondOne) {
    writeSettings(logging);
    writeCategories(record("A", "one", "<false/>") + record("A", "two"));
    const auto mixer = assembledMixer();
    log.clear();
    announce("A", 0.5);
    EXPECT_EQ(mixer->slider(1)->value(), 0.0F);
    EXPECT_EQ(log, (Lines{changed("A", "0.500000"),
                          "TW: category A not visible, no slider to update for that category"}));
}

TEST_F(VolumeNotification, OfAHiddenCategoryIsSilentWithoutLogging) {
    writeCategories(record("A", "a", "<false/>"));
    const auto mixer = assembledMixer();
    announce("A", 0.5);
    EXPECT_TRUE(log.empty());
}

TEST_F(VolumeNotification, LeavesASliderAloneThatTheUserHolds) {
    writeSettings(logging);
    const auto mixer = assembledMixer();
    mixer->slider(0)->setHighlighted(true);
    log.clear();
    announce("Ringtone", 0.9);
    EXPECT_EQ(mixer->slider(0)->value(), 50.0F);
    EXPECT_EQ(mixer->captionText(0), "Ringtone: 50%");
    EXPECT_EQ(log, (Lines{changed("Ringtone", "0.900000"),
                          "TW: mixer is initiating volume change event for category Ringtone, do "
                          "not update GUI"}));
    mixer->slider(0)->setHighlighted(false);
    announce("Ringtone", 0.9);
    EXPECT_EQ(mixer->captionText(0), "Ringtone: 90%");
}

TEST_F(VolumeNotification, MovesNoPartnerWhileTheRowsAreNotBound) {
    const auto mixer = assembledMixer();
    announce("Audio/Video", 0.9);
    EXPECT_EQ(mixer->slider(0)->value(), 50.0F);
    announce("Ringtone", 0.2);
    EXPECT_EQ(mixer->captionText(1), "Audio/Video (Speaker): 90%");
}

TEST_F(VolumeNotification, MovesTheBoundPartnerWhileTheChangedRouteIsTheSpeaker) {
    struct Row {
        const char* changedCategory;
        const char* route;
        NSInteger partner;
        bool follows;
        const char* line;
    };
    for (const Row& row : {Row{"Audio/Video", "Speaker", 0, true,
                               "TW: A/V route is Speaker, updating ringtone slider as well"},
                           Row{"Audio/Video", "SpeakerPhone", 0, true,
                               "TW: A/V route is Speaker, updating ringtone slider as well"},
                           Row{"Audio/Video", "Headphones", 0, false,
                               "TW: A/V route is not Speaker, not updating ringtone slider"},
                           Row{"Audio/Video", " Speaker", 0, false,
                               "TW: A/V route is not Speaker, not updating ringtone slider"},
                           Row{"Ringtone", "Speaker", 1, true,
                               "TW: A/V route is Speaker, updating A/V slider as well"},
                           Row{"Ringtone", "speaker", 1, false,
                               "TW: A/V route is not Speaker, not updating A/V slider"}}) {
        bind(logging);
        // The partner's own route must not matter.
        service->routes["Audio/Video"] = service->routes["Ringtone"] = "HDMI";
        service->routes[row.changedCategory] = row.route;
        const auto mixer = assembledMixer();
        log.clear();
        announce(row.changedCategory, 0.25);
        EXPECT_EQ(mixer->slider(row.partner)->value(), row.follows ? 25.0F : 50.0F) << row.route;
        EXPECT_EQ(mixer->slider(1 - row.partner)->value(), 25.0F);
        EXPECT_EQ(log, (Lines{changed(row.changedCategory, "0.250000"), row.line}));
        EXPECT_TRUE(service->sets.empty());
        NSNotificationCenter::defaultCenter().removeObserver(mixer.get());
    }
}

TEST_F(VolumeNotification, MovesNoPartnerWithoutARoute) {
    bind();
    const auto mixer = assembledMixer();
    service->routes.clear();
    announce("Audio/Video", 0.25);
    EXPECT_EQ(mixer->slider(0)->value(), 50.0F);
    mixer->avs = nullptr;
    announce("Ringtone", 0.75);
    EXPECT_EQ(mixer->slider(1)->value(), 25.0F);
}

TEST_F(VolumeNotification, OfAnyOtherCategoryAsksNoRouteForBinding) {
    bind(logging);
    const auto mixer = assembledMixer();
    service->routesAsked.clear();
    log.clear();
    announce("HeadsetBT", 0.25);
    EXPECT_TRUE(service->routesAsked.empty());
    EXPECT_EQ(log, Lines{changed("HeadsetBT", "0.250000")});
    EXPECT_EQ(mixer->slider(0)->value(), 50.0F);
    EXPECT_EQ(mixer->slider(1)->value(), 50.0F);
}

TEST_F(VolumeNotification, MovesThePartnerEvenWhileTheChangedSliderIsHeld) {
    bind();
    const auto mixer = assembledMixer();
    mixer->slider(1)->setHighlighted(true);
    announce("Audio/Video", 0.25);
    EXPECT_EQ(mixer->slider(0)->value(), 25.0F);
    EXPECT_EQ(mixer->slider(1)->value(), 50.0F);
}

TEST_F(VolumeNotification, MovesThePartnerEvenWhileThePartnerIsHeld) {
    bind();
    const auto mixer = assembledMixer();
    mixer->slider(0)->setHighlighted(true);
    announce("Audio/Video", 0.25);
    EXPECT_EQ(mixer->slider(0)->value(), 25.0F);
}

TEST_F(VolumeNotification, MovesThePartnerOfAHiddenCategory) {
    bind(logging);
    writeCategories(record("Ringtone", "r") + record("Audio/Video", "av", "<false/>"));
    const auto mixer = assembledMixer();
    log.clear();
    announce("Audio/Video", 0.25);
    EXPECT_EQ(mixer->slider(0)->value(), 25.0F);
    EXPECT_EQ(log, (Lines{changed("Audio/Video", "0.250000"),
                          "TW: A/V route is Speaker, updating ringtone slider as well",
                          "TW: category Audio/Video not visible, no slider to update for that "
                          "category"}));
}

TEST_F(VolumeNotification, WithAHiddenPartnerChangesOnlyItsOwnRow) {
    bind();
    writeCategories(record("Ringtone", "r", "<false/>") + record("Audio/Video", "av"));
    const auto mixer = assembledMixer();
    EXPECT_NO_THROW(announce("Audio/Video", 0.25));
    EXPECT_EQ(mixer->slider(1)->value(), 25.0F);
}

TEST_F(VolumeNotification, FailsWithARangeErrorWhenTheBoundPartnerIsMissing) {
    bind();
    writeCategories(record("Audio/Video", "av") + record("HeadsetBT", "h"));
    const auto mixer = assembledMixer();
    EXPECT_THROW(announce("Audio/Video", 0.25), std::out_of_range);
    EXPECT_EQ(mixer->slider(0)->value(), 50.0F);  // The partner comes before the row itself.
    service->routes["Audio/Video"] = "HDMI";
    EXPECT_NO_THROW(announce("Audio/Video", 0.25));
    NSNotificationCenter::defaultCenter().removeObserver(mixer.get());

    writeCategories(record("Ringtone", "r"));
    const auto ringer = assembledMixer();
    EXPECT_THROW(announce("Ringtone", 0.25), std::out_of_range);
}
