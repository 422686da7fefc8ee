#include "shells/desktop/tray/MediaVolume.hpp"

#include <gtest/gtest.h>

#include <limits>

using namespace desktop;

namespace test {
namespace {

TEST(TrayLook, IconTellsSilenceAndThreeLoudnesses) {
    EXPECT_EQ(trayLook("Music", 0.0F).icon, "audio-volume-muted-symbolic");
    EXPECT_EQ(trayLook("Music", 0.01F).icon, "audio-volume-low-symbolic");
    EXPECT_EQ(trayLook("Music", 0.33F).icon, "audio-volume-low-symbolic");
    EXPECT_EQ(trayLook("Music", 0.34F).icon, "audio-volume-medium-symbolic");
    EXPECT_EQ(trayLook("Music", 0.66F).icon, "audio-volume-medium-symbolic");
    EXPECT_EQ(trayLook("Music", 0.67F).icon, "audio-volume-high-symbolic");
    EXPECT_EQ(trayLook("Music", 1.0F).icon, "audio-volume-high-symbolic");
}

TEST(TrayLook, TextTellsTheVolume) {
    EXPECT_EQ(trayLook("Music", 0.0F).text, "Music: 0%");
    EXPECT_EQ(trayLook("Music", 0.4F).text, "Music: 40%");
    EXPECT_EQ(trayLook("Music", 1.0F).text, "Music: 100%");
}

TEST(TrayLook, UnknownVolumeIsSilentAndSaysSo) {
    EXPECT_EQ(trayLook("Music", std::nullopt).icon, "audio-volume-muted-symbolic");
    EXPECT_EQ(trayLook("Music", std::nullopt).text, "Music: unknown");
}

TEST(TrayLook, NonsenseStaysWithinTheScale) {
    EXPECT_EQ(trayLook("Music", std::numeric_limits<float>::quiet_NaN()).icon,
              "audio-volume-muted-symbolic");
    EXPECT_EQ(trayLook("Music", 2.0F).text, "Music: 100%");
    EXPECT_EQ(trayLook("Music", -1.0F).text, "Music: 0%");
}

TEST(TrayScroll, NotchAwayFromTheUserIsFivePercentUpInEitherCount) {
    EXPECT_FLOAT_EQ(volumeChangeByScroll(-1, "vertical"), 0.05F);
    EXPECT_FLOAT_EQ(volumeChangeByScroll(1, "vertical"), -0.05F);
    EXPECT_FLOAT_EQ(volumeChangeByScroll(120, "Vertical"), 0.05F);
    EXPECT_FLOAT_EQ(volumeChangeByScroll(-120, "Vertical"), -0.05F);
}

TEST(TrayScroll, PartsOfANotchCountAsParts) {
    EXPECT_FLOAT_EQ(volumeChangeByScroll(15, "vertical"), 0.00625F);
    EXPECT_FLOAT_EQ(volumeChangeByScroll(14, "vertical"), -0.7F);
    EXPECT_FLOAT_EQ(volumeChangeByScroll(0, "vertical"), 0);
}

TEST(TrayScroll, NonsenseChangesNoMoreThanTheWholeScale) {
    EXPECT_FLOAT_EQ(volumeChangeByScroll(std::numeric_limits<int>::max(), "vertical"), 1);
    EXPECT_FLOAT_EQ(volumeChangeByScroll(std::numeric_limits<int>::min(), "vertical"), -1);
    EXPECT_FLOAT_EQ(volumeChangeByScroll(-1, ""), 0.05F);
}

TEST(TrayScroll, SidewaysChangesNothing) {
    EXPECT_FLOAT_EQ(volumeChangeByScroll(120, "horizontal"), 0);
    EXPECT_FLOAT_EQ(volumeChangeByScroll(-1, "Horizontal"), 0);
}

}  // namespace
}  // namespace test
