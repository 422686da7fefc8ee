#include "shells/headless/Answer.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace headless {
namespace {

TEST(JsonNumber, IsTheShortestOfSinglePrecision) {
    EXPECT_EQ(lineFrom(jsonNumber(0.376F)), "0.376");
    EXPECT_EQ(lineFrom(jsonNumber(37.6F)), "37.6");
    EXPECT_EQ(lineFrom(jsonNumber(0.1F + 0.2F)), "0.3");
    EXPECT_EQ(lineFrom(jsonNumber(1.0F / 3)), "0.33333334");
}

TEST(JsonNumber, IsTheShortestOfDoublePrecision) {
    EXPECT_EQ(lineFrom(jsonNumber(767.5)), "767.5");
    EXPECT_EQ(lineFrom(jsonNumber(0.1 + 0.2)), "0.30000000000000004");
}

TEST(JsonNumber, HasNoFractionWhenItIsWhole) {
    EXPECT_EQ(lineFrom(jsonNumber(320.0)), "320");
    EXPECT_EQ(lineFrom(jsonNumber(100.0F)), "100");
    EXPECT_EQ(lineFrom(jsonNumber(-0.0)), "0");
}

TEST(JsonNumber, StaysANumberHoweverLarge) {
    EXPECT_EQ(jsonNumber(1e300).get<double>(), 1e300);
    EXPECT_EQ(jsonNumber(9007199254740992.0).get<double>(), 9007199254740992.0);
}

TEST(JsonNumber, IsNullWhenItIsNotFinite) {
    EXPECT_TRUE(jsonNumber(std::numeric_limits<float>::quiet_NaN()).is_null());
    EXPECT_TRUE(jsonNumber(std::numeric_limits<double>::infinity()).is_null());
}

TEST(JsonValue, ShowsEveryKindOfPropertyValue) {
    EXPECT_EQ(lineFrom(jsonValue({})), "null");
    EXPECT_EQ(lineFrom(jsonValue(PropertyValue(true))), "true");
    EXPECT_EQ(lineFrom(jsonValue(PropertyValue(5))), "5");
    EXPECT_EQ(lineFrom(jsonValue(PropertyValue(std::numeric_limits<std::uint64_t>::max()))),
              "18446744073709551615");
    EXPECT_EQ(lineFrom(jsonValue(PropertyValue(PropertyValue::Date{1.5}))), "1.5");
    EXPECT_EQ(lineFrom(jsonValue(PropertyValue(PropertyValue::Data{}))), "null");
    const PropertyValue::Dictionary size = {{"width", PropertyValue(320.0)},
                                            {"height", PropertyValue(270.0)}};
    EXPECT_EQ(lineFrom(jsonValue(PropertyValue(size))), R"({"width":320,"height":270})");
    const PropertyValue::Array array = {PropertyValue("a"), PropertyValue(size)};
    EXPECT_EQ(lineFrom(jsonValue(PropertyValue(array))), R"(["a",{"width":320,"height":270}])");
}

TEST(JsonLine, ReplacesBytesThatAreNotUtf8) {
    const std::string text = lineFrom(Json(std::string("a\xff z")));
    EXPECT_EQ(Json::parse(text).get<std::string>(), "a\xEF\xBF\xBD z");
}

TEST(JsonLine, EscapesWhatActsOnATerminal) {
    EXPECT_EQ(lineFrom(Json("\x1b[31m\x7f\u009b\u202E\u2067\u2028")),
              R"("\u001b[31m\u007f\u009b\u202e\u2067\u2028")");
}

TEST(JsonLine, StaysOneLine) {
    EXPECT_EQ(lineFrom(Json(std::string("a\nb"))), R"("a\nb")");
}

}  // namespace
}  // namespace headless
