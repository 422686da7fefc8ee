#include "backends/pulse/mirror/ServerMirror.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace pulse;

TEST(VolumeScale, MeetsTheServersUnitsAtBothEndsAndBetween) {
    EXPECT_EQ(rawFromFraction(0), 0U);
    EXPECT_EQ(rawFromFraction(1.0F / 65536), 1U);
    EXPECT_EQ(rawFromFraction(0.005F), 328U);
    EXPECT_EQ(rawFromFraction(0.376F), 24642U);
    EXPECT_EQ(rawFromFraction(65535.0F / 65536), 65535U);
    EXPECT_EQ(rawFromFraction(1), 65536U);
}

TEST(VolumeScale, RoundsToTheNearestUnit) {
    EXPECT_EQ(rawFromFraction(0.49F / 65536), 0U);
    EXPECT_EQ(rawFromFraction(0.51F / 65536), 1U);
}

TEST(VolumeScale, KeepsAFractionWithinItsRange) {
    EXPECT_EQ(rawFromFraction(-1.0F / 65536), 0U);
    EXPECT_EQ(rawFromFraction(65537.0F / 65536), 65536U);
    EXPECT_EQ(rawFromFraction(1.5F), 65536U);
    EXPECT_EQ(rawFromFraction(std::numeric_limits<float>::infinity()), 65536U);
    EXPECT_EQ(rawFromFraction(-std::numeric_limits<float>::infinity()), 0U);
    EXPECT_EQ(rawFromFraction(std::numeric_limits<float>::quiet_NaN()), 0U);
}

TEST(VolumeScale, ReadsWhatIsAmplifiedAsFull) {
    EXPECT_EQ(fractionFromRaw(0), 0);
    EXPECT_EQ(fractionFromRaw(1), 1.0F / 65536);
    EXPECT_EQ(fractionFromRaw(65535), 65535.0F / 65536);
    EXPECT_EQ(fractionFromRaw(65536), 1);
    EXPECT_EQ(fractionFromRaw(65537), 1);
    EXPECT_EQ(fractionFromRaw(98304), 1);
    EXPECT_EQ(fractionFromRaw(PA_VOLUME_INVALID), 1);
}

TEST(VolumeScale, BringsEveryUnitBack) {
    for (pa_volume_t raw = 0; raw <= 65536; ++raw)
        ASSERT_EQ(rawFromFraction(fractionFromRaw(raw)), raw);
}

TEST(VolumeScale, BringsEveryPercentBackCloserThanACaptionShows) {
    for (int percent = 0; percent <= 100; ++percent) {
        const float fraction = static_cast<float>(percent) / 100;
        EXPECT_NEAR(fractionFromRaw(rawFromFraction(fraction)), fraction, 8e-6);
    }
}

TEST(VolumeScale, HearsTheLoudestChannelUnlessItIsMuted) {
    pa_cvolume volume{2, {16384, 49152}};
    EXPECT_EQ(levelFrom(volume, Mute::Off).heard(), 0.75F);
    EXPECT_EQ(levelFrom(volume, Mute::On).heard(), 0);
    EXPECT_EQ(levelFrom(volume, Mute::On), (Level{0.75F, Mute::On})) << "which it returns to";
    volume.channels = 0;
    EXPECT_EQ(levelFrom(volume, Mute::Off).heard(), 0);
}
