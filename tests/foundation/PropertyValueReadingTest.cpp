#include "platform/foundation/PropertyValue.hpp"
#include "tests/locale/CommaLocale.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr NSInteger least = std::numeric_limits<NSInteger>::min();
constexpr NSInteger greatest = std::numeric_limits<NSInteger>::max();

/// How a text reads in each of the three ways.
struct Reading {
    const char* text;
    bool asBool;
    NSInteger asInteger;
    float asFloat;
};

void PrintTo(const Reading& reading, std::ostream* out) {
    *out << '"' << reading.text << '"';
}

class TextReading : public testing::TestWithParam<Reading> {};

TEST_P(TextReading, IsAsDocumented) {
    const PropertyValue value(GetParam().text);
    EXPECT_EQ(value.boolValue(), GetParam().asBool);
    EXPECT_EQ(value.integerValue(), GetParam().asInteger);
    EXPECT_EQ(value.floatValue(), GetParam().asFloat);
}

INSTANTIATE_TEST_SUITE_P(Words, TextReading,
                         testing::Values(Reading{"", false, 0, 0}, Reading{" ", false, 0, 0},
                                         Reading{"Y", true, 0, 0}, Reading{"y", true, 0, 0},
                                         Reading{"T", true, 0, 0}, Reading{"t", true, 0, 0},
                                         Reading{"YES", true, 0, 0}, Reading{"true", true, 0, 0},
                                         Reading{" true", true, 0, 0},
                                         Reading{"To be or not", true, 0, 0},
                                         Reading{"NO", false, 0, 0}, Reading{"false", false, 0, 0},
                                         Reading{"on", false, 0, 0}, Reading{"x1", false, 0, 0},
                                         Reading{"-Y", true, 0, 0}, Reading{"0t", true, 0, 0},
                                         Reading{"inf", false, 0, 0}, Reading{"nan", false, 0, 0},
                                         Reading{"+", false, 0, 0}, Reading{"-", false, 0, 0},
                                         Reading{".", false, 0, 0}, Reading{"e5", false, 0, 0}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, TextReading,
    testing::Values(
        Reading{"0", false, 0, 0}, Reading{"1", true, 1, 1}, Reading{"9", true, 9, 9},
        Reading{"-3", true, -3, -3}, Reading{"+3", true, 3, 3}, Reading{"007", true, 7, 7},
        Reading{"-000", false, 0, 0}, Reading{"+000009", true, 9, 9}, Reading{"1x", true, 1, 1},
        Reading{"12 34", true, 12, 12}, Reading{" \t\r\n\v\f5", true, 5, 5},
        Reading{"0.9", false, 0, 0.9F}, Reading{"1.9", true, 1, 1.9F},
        Reading{"-1.9", true, -1, -1.9F}, Reading{".5", false, 0, 0.5F}, Reading{"5.", true, 5, 5},
        Reading{"0,9", false, 0, 0}, Reading{"1e3", true, 1, 1000}, Reading{"1E+3", true, 1, 1000},
        Reading{"1e-3", true, 1, 0.001F}, Reading{"1e", true, 1, 1}, Reading{"1e+", true, 1, 1},
        Reading{"0x10", false, 0, 0}, Reading{"1_000", true, 1, 1}));

INSTANTIATE_TEST_SUITE_P(Signs, TextReading,
                         testing::Values(Reading{"--1", false, 0, 0}, Reading{"-+1", false, 0, 0},
                                         Reading{"- 1", false, 0, 0}, Reading{"+ 1", false, 0, 0},
                                         Reading{"0-1", false, 0, 0}));

INSTANTIATE_TEST_SUITE_P(OtherScripts, TextReading,
                         testing::Values(Reading{"\u0663", false, 0, 0},     // Arabic 3
                                         Reading{"\uFF11", false, 0, 0},     // full-width 1
                                         Reading{"\xFF\xFE", false, 0, 0},   // not UTF-8
                                         Reading{"\u2212\x31", false, 0, 0}  // a minus sign, 1
                                         ));

TEST(TextAsInteger, IsClampedAtItsLimits) {
    const auto integer = [](const std::string& text) { return PropertyValue(text).integerValue(); };
    EXPECT_EQ(integer(std::to_string(greatest)), greatest);
    EXPECT_EQ(integer(std::to_string(greatest - 1)), greatest - 1);
    EXPECT_EQ(integer(std::to_string(least)), least);
    EXPECT_EQ(integer(std::to_string(least + 1)), least + 1);
    EXPECT_EQ(integer("9223372036854775808"), greatest);
    EXPECT_EQ(integer("-9223372036854775809"), least);
    EXPECT_EQ(integer(std::string(5000, '9')), greatest);
    EXPECT_EQ(integer("-" + std::string(5000, '9')), least);
    EXPECT_EQ(integer(std::string(5000, '0') + "7"), 7);
}

TEST(TextAsFloat, IsInfiniteAboveAndZeroBelowTheRange) {
    const auto number = [](const std::string& text) { return PropertyValue(text).floatValue(); };
    EXPECT_EQ(number("3.4028235e38"), std::numeric_limits<float>::max());
    EXPECT_EQ(number("3.5e38"), infinity);
    EXPECT_EQ(number("-3.5e38"), -infinity);
    EXPECT_EQ(number("1e99999999999999999999"), infinity);
    EXPECT_EQ(number("-1e99999999999999999999"), -infinity);
    EXPECT_EQ(number("1e-99999999999999999999"), 0);
    EXPECT_EQ(number("1e-60"), 0);
    EXPECT_EQ(number("1.5e-45"), std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(number("0e99999999999999999999"), 0);
}

TEST(TextAsFloat, WeighsDigitsAgainstTheExponent) {
    const auto number = [](const std::string& text) { return PropertyValue(text).floatValue(); };
    EXPECT_EQ(number(std::string(5000, '9')), infinity);
    EXPECT_EQ(number("0." + std::string(5000, '0') + "1"), 0);
    EXPECT_EQ(number("1" + std::string(5000, '0') + "e-5000"), 1);
    EXPECT_EQ(number("0." + std::string(4999, '0') + "1e5000"), 1);
    EXPECT_EQ(number("0." + std::string(10, '0') + "1e60"), infinity);
    EXPECT_EQ(number("1000000e-70"), 0);
}

TEST(TextAsFloat, DoesNotFollowTheLocale) {
    const CommaLocale locale;
    if (!locale.isActive()) GTEST_SKIP() << "no locale with a decimal comma on this system";
    EXPECT_EQ(PropertyValue("0.5").floatValue(), 0.5F);
    EXPECT_EQ(PropertyValue("0,5").floatValue(), 0.0F);
}

TEST(NumberAsBool, IsTrueForEverythingButZero) {
    EXPECT_TRUE(PropertyValue(true).boolValue());
    EXPECT_TRUE(PropertyValue(1).boolValue());
    EXPECT_TRUE(PropertyValue(-1).boolValue());
    EXPECT_TRUE(PropertyValue(256).boolValue());
    EXPECT_TRUE(PropertyValue(std::uint64_t{1} << 63).boolValue());
    EXPECT_TRUE(PropertyValue(0.9).boolValue());
    EXPECT_TRUE(PropertyValue(1e-300).boolValue());
    EXPECT_FALSE(PropertyValue(false).boolValue());
    EXPECT_FALSE(PropertyValue(0).boolValue());
    EXPECT_FALSE(PropertyValue(0.0).boolValue());
    EXPECT_FALSE(PropertyValue(-0.0).boolValue());
}

TEST(NumberAsInteger, LosesItsFractionAndIsClamped) {
    EXPECT_EQ(PropertyValue(true).integerValue(), 1);
    EXPECT_EQ(PropertyValue(2.9).integerValue(), 2);
    EXPECT_EQ(PropertyValue(-2.9).integerValue(), -2);
    EXPECT_EQ(PropertyValue(1e30).integerValue(), greatest);
    EXPECT_EQ(PropertyValue(-1e30).integerValue(), least);
    EXPECT_EQ(PropertyValue(static_cast<double>(greatest)).integerValue(), greatest);
    EXPECT_EQ(PropertyValue(static_cast<double>(least)).integerValue(), least);
    EXPECT_EQ(PropertyValue(std::nan("")).integerValue(), 0);
    EXPECT_EQ(PropertyValue(std::numeric_limits<double>::infinity()).integerValue(), greatest);
    EXPECT_EQ(PropertyValue(-std::numeric_limits<double>::infinity()).integerValue(), least);
    EXPECT_EQ(PropertyValue(std::numeric_limits<std::uint64_t>::max()).integerValue(), greatest);
    EXPECT_EQ(PropertyValue(std::numeric_limits<std::int64_t>::min()).integerValue(), least);
}

TEST(NumberAsFloat, IsTheNearestFloat) {
    EXPECT_EQ(PropertyValue(true).floatValue(), 1.0F);
    EXPECT_EQ(PropertyValue(-7).floatValue(), -7.0F);
    EXPECT_EQ(PropertyValue(std::numeric_limits<std::uint64_t>::max()).floatValue(), 0x1p64F);
    EXPECT_EQ(PropertyValue(0.1).floatValue(), 0.1F);
    EXPECT_EQ(PropertyValue(1e300).floatValue(), infinity);
    EXPECT_TRUE(std::isnan(PropertyValue(std::nan("")).floatValue()));
}

TEST(OtherKinds, ReadAsFalseAndZero) {
    for (const PropertyValue& value :
         {PropertyValue(), PropertyValue(PropertyValue::Date{5}),
          PropertyValue(PropertyValue::Data{std::byte{1}}),
          PropertyValue(PropertyValue::Array{PropertyValue(1)}),
          PropertyValue(PropertyValue::Dictionary{{"a", PropertyValue(1)}})}) {
        EXPECT_FALSE(value.boolValue());
        EXPECT_EQ(value.integerValue(), 0);
        EXPECT_EQ(value.floatValue(), 0.0F);
    }
}

}  // namespace
