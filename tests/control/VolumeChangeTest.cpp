#include "shells/control/Request.hpp"

#include <gtest/gtest.h>

#include <string>

namespace control {
namespace {

struct Reading {
    const char* text;
    double fraction;
};

class ReadableChange : public testing::TestWithParam<Reading> {};

TEST_P(ReadableChange, IsTheVolumeOrTheStepThatItSays) {
    const auto change = VolumeChange::from(GetParam().text);
    ASSERT_TRUE(change) << GetParam().text;
    EXPECT_DOUBLE_EQ(change->fraction(), GetParam().fraction) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Every, ReadableChange,
    testing::Values(Reading{"40%", 0.4}, Reading{"0%", 0}, Reading{"100%", 1}, Reading{"101%", 1},
                    Reading{"99999999999999999999%", 1}, Reading{"37.6%", 0.376},
                    Reading{".5%", 0.005}, Reading{"5.%", 0.05}, Reading{"0.4", 0.4},
                    Reading{"1.0", 1}, Reading{"1.", 1}, Reading{"150.5%", 1}, Reading{"-1.0", -1},
                    Reading{"0.0", 0}, Reading{"+5%", 0.05}, Reading{"-5%", -0.05},
                    Reading{"+0.25", 0.25}, Reading{"-0.25", -0.25}, Reading{"+60%", 0.6},
                    Reading{"-60%", -0.6}, Reading{"-300%", -1}, Reading{"-0%", 0}));

TEST(VolumeChange, IsAStepWhenItHasASign) {
    EXPECT_TRUE(VolumeChange::from("+5%")->isStep());
    EXPECT_TRUE(VolumeChange::from("-0.1")->isStep());
    EXPECT_FALSE(VolumeChange::from("5%")->isStep());
}

class UnreadableChange : public testing::TestWithParam<std::string> {};

TEST_P(UnreadableChange, IsNone) {
    EXPECT_FALSE(VolumeChange::from(GetParam()));
}

// A bare number could be a percentage as well as the whole volume, and so could a fraction past it.
INSTANTIATE_TEST_SUITE_P(Every, UnreadableChange,
                         testing::Values("", "%", "+", "-", "+%", "40", "1", "0", "+5", "40.0",
                                         "5.", "1.5", "1.01", "+5.0", "-1.5", "+40.", "loud",
                                         "40%%", "40 %", " 40%", "40% ", "--5%", "+-5%", "5%+",
                                         "5%-", "nan%", "inf%", "0x1p3%", "1e2%", "1e-1", "1.2.3",
                                         "1,5%", ".", ".%", "+.", "4O%", "٤٠%", "0.4f",
                                         std::string("4\0%", 3), std::string(400, '9') + "%"));

}  // namespace
}  // namespace control
