#include "shells/control/VolumeChange.hpp"

#include <gtest/gtest.h>

#include <string>

namespace control {
namespace {

struct Reading {
    const char* text;
    float from;
    float to;
};

class ReadableChange : public testing::TestWithParam<Reading> {};

TEST_P(ReadableChange, LeadsToTheVolumeThatItSays) {
    const auto change = VolumeChange::from(GetParam().text);
    ASSERT_TRUE(change) << GetParam().text;
    EXPECT_EQ(change->appliedTo(GetParam().from), GetParam().to) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Every, ReadableChange,
                         testing::Values(Reading{"40%", 0.9F, 0.4F}, Reading{"0%", 0.9F, 0},
                                         Reading{"100%", 0, 1}, Reading{"101%", 0, 1},
                                         Reading{"99999999999999999999%", 0, 1},
                                         Reading{"37.6%", 0, 0.376F}, Reading{".5%", 0, 0.005F},
                                         Reading{"5.%", 0, 0.05F}, Reading{"0.4", 0, 0.4F},
                                         Reading{"1.0", 0, 1}, Reading{"1.", 0, 1},
                                         Reading{"150.5%", 0, 1}, Reading{"-1.0", 0.5F, 0},
                                         Reading{"0.0", 0.5F, 0}, Reading{"+5%", 0.5F, 0.55F},
                                         Reading{"-5%", 0.5F, 0.45F}, Reading{"+0.25", 0.5F, 0.75F},
                                         Reading{"-0.25", 0.5F, 0.25F}, Reading{"+60%", 0.5F, 1},
                                         Reading{"-60%", 0.5F, 0}, Reading{"-0%", 0.5F, 0.5F}));

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
