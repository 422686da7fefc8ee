#include "mixer/Caption.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace test {
namespace {

TEST(CaptionTest, PercentageIsRoundedToAWholeNumberAndATieToTheEvenOne) {
    EXPECT_EQ(percentText(0), "0%");
    EXPECT_EQ(percentText(0.5F), "0%");
    EXPECT_EQ(percentText(1.5F), "2%");
    EXPECT_EQ(percentText(2.5F), "2%");
    EXPECT_EQ(percentText(49.4F), "49%");
    EXPECT_EQ(percentText(49.6F), "50%");
    EXPECT_EQ(percentText(99.5F), "100%");
    EXPECT_EQ(percentText(100), "100%");
}

TEST(CaptionTest, KeepsTheSignOfWhatRoundsToZeroFromBelow) {
    EXPECT_EQ(percentText(-0.3F), "-0%");
    EXPECT_EQ(percentText(-0.0F), "-0%");
}

TEST(CaptionTest, SaysWhateverABrokenServiceAnswers) {
    EXPECT_EQ(percentText(-3.5F), "-4%");
    EXPECT_EQ(percentText(1000), "1000%");
    EXPECT_EQ(percentText(1001), "1001%");
    EXPECT_EQ(percentText(-1001), "-1001%");
    EXPECT_EQ(percentText(1e12F), "999999995904%");
    EXPECT_EQ(percentText(NAN), "nan%");
    EXPECT_EQ(percentText(INFINITY), "inf%");
}

}  // namespace
}  // namespace test
