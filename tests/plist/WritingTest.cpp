#include "tests/plist/Xml.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Array = PropertyValue::Array;
using Dictionary = PropertyValue::Dictionary;

std::optional<std::string> encoded(const PropertyValue& value) {
    return PlistCodec().encode(value);
}

void expectRoundTrip(const PropertyValue& value) {
    const auto bytes = encoded(value);
    ASSERT_TRUE(bytes);
    const auto again = decoded(*bytes);
    ASSERT_TRUE(again) << *bytes;
    EXPECT_EQ(*again, value) << *bytes;
}

PropertyValue nested(int depth) {
    PropertyValue value(Array{});
    for (int level = 1; level < depth; ++level)
        value = PropertyValue(Array{value});
    return value;
}

TEST(PropertyListWriting, WritesXmlWithTheKeysInTheirOrder) {
    const auto bytes = encoded(PropertyValue(Array{
        PropertyValue(Dictionary{{"z", PropertyValue("Ringer")}, {"a", PropertyValue(true)}})}));
    ASSERT_TRUE(bytes);
    EXPECT_TRUE(bytes->starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist"));
    EXPECT_NE(bytes->find("<plist version=\"1.0\">"), std::string::npos);
    EXPECT_LT(bytes->find("<key>z</key>"), bytes->find("<key>a</key>"));
    EXPECT_TRUE(bytes->ends_with("</plist>\n"));
}

TEST(PropertyListWriting, WritesEveryKindSoThatItReadsTheSame) {
    for (const PropertyValue& value : {
             PropertyValue(true),
             PropertyValue(false),
             PropertyValue(0),
             PropertyValue(-1),
             PropertyValue(std::numeric_limits<std::int64_t>::min()),
             PropertyValue(std::numeric_limits<std::int64_t>::max()),
             PropertyValue(std::numeric_limits<std::uint64_t>::max()),
             PropertyValue(0.1),
             PropertyValue(-1.5e300),
             PropertyValue(5e-324),
             PropertyValue(1.0 / 3),
             PropertyValue(std::numeric_limits<double>::infinity()),
             PropertyValue(PropertyValue::Date{0}),
             PropertyValue(PropertyValue::Date{-5e9}),
             PropertyValue(PropertyValue::Date{2.5e11}),
             PropertyValue(PropertyValue::Data{}),
             PropertyValue(PropertyValue::Data(1000, std::byte{0xA5})),
             PropertyValue(""),
             PropertyValue(" <a>&amp;\"'\t\n\u20AC\U0001F600 "),
             PropertyValue("]]>"),
             PropertyValue(Array{}),
             PropertyValue(Dictionary{}),
             PropertyValue(Dictionary{{"", PropertyValue("empty")}, {"<&>", PropertyValue("")}}),
         }) {
        expectRoundTrip(value);
    }
}

TEST(PropertyListWriting, WritesTheDeepestNestingAndRefusesOneMore) {
    expectRoundTrip(nested(NSPropertyList::maximumDepth));
    EXPECT_FALSE(encoded(nested(NSPropertyList::maximumDepth + 1)));
}

TEST(PropertyListWriting, RefusesWhatHasNoXmlForm) {
    EXPECT_FALSE(encoded(PropertyValue()));
    EXPECT_FALSE(encoded(PropertyValue(Array{PropertyValue()})));
    EXPECT_FALSE(encoded(PropertyValue(Dictionary{{"a", PropertyValue()}})));
}

TEST(PropertyListWriting, RefusesTextsThatXmlCannotCarry) {
    for (const std::string& text :
         {std::string("\0", 1), std::string("\x01"), std::string("\x1F"), std::string("\xFF"),
          std::string("\x80"), std::string("\xC3"), std::string("\xC0\xAF"),
          std::string("\xE0\x80\xAF"), std::string("\xED\xA0\x80"), std::string("\xEF\xBF\xBF"),
          std::string("\xF4\x90\x80\x80"), std::string("\xF0\x9F\x98")}) {
        EXPECT_FALSE(encoded(PropertyValue(text)));
        EXPECT_FALSE(encoded(PropertyValue(Dictionary{{text, PropertyValue(true)}})));
    }
    for (const char* text :
         {"\x7F", "\xC2\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBD", "\xF4\x8F\xBF\xBF"}) {
        expectRoundTrip(PropertyValue(text));
    }
}

TEST(PropertyListWriting, RefusesDatesWithoutFourDigitsForTheirYear) {
    constexpr double year1000 = -31588012800;
    constexpr double year10000 = 252423993600;
    EXPECT_FALSE(encoded(PropertyValue(PropertyValue::Date{year1000 - 1})));
    expectRoundTrip(PropertyValue(PropertyValue::Date{year1000}));
    expectRoundTrip(PropertyValue(PropertyValue::Date{year10000 - 1}));
    EXPECT_FALSE(encoded(PropertyValue(PropertyValue::Date{year10000})));
    EXPECT_FALSE(
        encoded(PropertyValue(PropertyValue::Date{std::numeric_limits<double>::quiet_NaN()})));
}

}  // namespace
