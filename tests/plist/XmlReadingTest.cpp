#include "tests/plist/Xml.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Array = PropertyValue::Array;
using Dictionary = PropertyValue::Dictionary;

TEST(XmlPropertyList, ReadsEveryKindOfValue) {
    const auto value = decodedBody(
        "<dict><key>yes</key><true/><key>no</key><false/><key>n</key><integer>-7</integer>"
        "<key>r</key><real>0.25</real><key>s</key><string>Ringer</string>"
        "<key>d</key><date>2001-01-02T00:00:01Z</date><key>b</key><data>QUJD</data>"
        "<key>a</key><array><string>x</string><dict/></array></dict>");
    ASSERT_TRUE(value);
    const PropertyValue expected(Dictionary{
        {"yes", PropertyValue(true)},
        {"no", PropertyValue(false)},
        {"n", PropertyValue(-7)},
        {"r", PropertyValue(0.25)},
        {"s", PropertyValue("Ringer")},
        {"d", PropertyValue(PropertyValue::Date{86401})},
        {"b", PropertyValue(PropertyValue::Data{std::byte{'A'}, std::byte{'B'}, std::byte{'C'}})},
        {"a", PropertyValue(Array{PropertyValue("x"), PropertyValue(Dictionary{})})},
    });
    EXPECT_EQ(*value, expected);
}

TEST(XmlPropertyList, KeepsTheOrderOfKeys) {
    const auto value = decodedBody("<dict><key>z</key><true/><key>a</key><true/></dict>");
    ASSERT_TRUE(value && value->dictionary());
    EXPECT_EQ(value->dictionary()->at(0).first, "z");
    EXPECT_EQ(value->dictionary()->at(1).first, "a");
}

TEST(XmlPropertyList, TakesTheLastOfARepeatedKey) {
    const auto value =
        decodedBody("<dict><key>a</key><string>1</string><key>a</key><string>2</string></dict>");
    ASSERT_TRUE(value);
    EXPECT_EQ(*value, PropertyValue(Dictionary{{"a", PropertyValue("2")}}));
}

TEST(XmlPropertyList, ReadsIntegersToTheEndsOfTheirRange) {
    using Signed = std::numeric_limits<std::int64_t>;
    using Unsigned = std::numeric_limits<std::uint64_t>;
    const auto integer = [](const char* text) {
        return *decodedBody(std::string("<integer>") + text + "</integer>");
    };
    EXPECT_EQ(integer("-9223372036854775808"), PropertyValue(Signed::min()));
    EXPECT_EQ(integer("-1"), PropertyValue(-1));
    EXPECT_EQ(integer("0"), PropertyValue(0));
    EXPECT_EQ(integer("9223372036854775807"), PropertyValue(Signed::max()));
    EXPECT_EQ(integer("9223372036854775808"), PropertyValue(std::uint64_t{Signed::max()} + 1));
    EXPECT_EQ(integer("18446744073709551615"), PropertyValue(Unsigned::max()));
    EXPECT_EQ(integer("0x1F"), PropertyValue(31));
}

TEST(XmlPropertyList, ReadsRealsThatAreNotFinite) {
    EXPECT_TRUE(std::isnan(decodedBody("<real>nan</real>")->floatValue()));
    EXPECT_EQ(decodedBody("<real>+infinity</real>")->floatValue(), INFINITY);
    EXPECT_EQ(decodedBody("<real>-infinity</real>")->floatValue(), -INFINITY);
}

TEST(XmlPropertyList, ReadsADateThatDoesNotFitIn32BitsOfSeconds) {
    EXPECT_EQ(*decodedBody("<date>2317-11-21T17:46:40Z</date>"),
              PropertyValue(PropertyValue::Date{1e10}));
}

TEST(XmlPropertyList, ReadsEmptyValues) {
    EXPECT_EQ(*decodedBody("<string/>"), PropertyValue(""));
    EXPECT_EQ(*decodedBody("<string></string>"), PropertyValue(""));
    EXPECT_EQ(*decodedBody("<data/>"), PropertyValue(PropertyValue::Data{}));
    EXPECT_EQ(*decodedBody("<array/>"), PropertyValue(Array{}));
    EXPECT_EQ(*decodedBody("<dict></dict>"), PropertyValue(Dictionary{}));
    EXPECT_EQ(*decodedBody("<dict><key></key><true/></dict>"),
              PropertyValue(Dictionary{{"", PropertyValue(true)}}));
}

TEST(XmlPropertyList, KeepsBlanksAndLineBreaksOfAText) {
    EXPECT_EQ(*decodedBody("<string> a\n\tb </string>"), PropertyValue(" a\n\tb "));
}

TEST(XmlPropertyList, ReadsEntitiesCommentsAndCharacterData) {
    EXPECT_EQ(*decodedBody("<string>&lt;&amp;&gt;&quot;&apos;&#65;&#x20AC;</string>"),
              PropertyValue("<&>\"'A\u20AC"));
    EXPECT_EQ(*decodedBody("<string>a<!-- </string> -->b<![CDATA[</c>&amp;]]>d</string>"),
              PropertyValue("ab</c>&amp;d"));
    EXPECT_EQ(*decodedBody("<!-- <dict> --><array><!-- </array> --><?x </array>?></array>"),
              PropertyValue(Array{}));
}

TEST(XmlPropertyList, KeepsTheBytesOfATextThatIsNotUtf8) {
    EXPECT_EQ(*decodedBody("<string>a\xFF\x80</string>"), PropertyValue("a\xFF\x80"));
}

TEST(XmlPropertyList, ReadsWhatFollowsAByteOrderMarkOrBlanks) {
    EXPECT_EQ(*decoded("\xEF\xBB\xBF" + documentOf("<true/>")), PropertyValue(true));
    EXPECT_EQ(*decoded("\n \t\r\n" + documentOf("<true/>")), PropertyValue(true));
}

TEST(XmlPropertyList, NeedsNoHeader) {
    EXPECT_EQ(*decoded("<plist version='1.0'><true/></plist>"), PropertyValue(true));
    EXPECT_EQ(*decoded("<array><true/></array>"), PropertyValue(Array{PropertyValue(true)}));
}

TEST(XmlPropertyList, RefusesWhatIsNotWhole) {
    const std::string whole = documentOf(
        "<dict><key>a</key><array><string>b</string></array>"
        "<key>c</key><integer>1</integer></dict>");
    ASSERT_TRUE(decoded(whole));
    for (std::size_t length = 0; length < whole.rfind('>'); ++length) {
        EXPECT_FALSE(decoded(whole.substr(0, length))) << length;
    }
}

TEST(XmlPropertyList, RefusesWhatIsNoPropertyList) {
    for (const char* body :
         {"", "text", "<html></html>", "<set></set>", "<string>a</key>", "<array><true></array>",
          "<dict><string>a</string></dict>", "<array></dict>", "<string>&unknown;</string>",
          "<true/><true/>", "<array/><array/>", "<string><b>x</b></string>", "</array>"}) {
        EXPECT_FALSE(decodedBody(body)) << body;
    }
    EXPECT_FALSE(decoded(""));
    EXPECT_FALSE(decoded("<plist></plist>"));
    EXPECT_FALSE(decoded("<plist/>"));
    EXPECT_FALSE(decoded(std::string("\0\0\0\0", 4)));
}

}  // namespace
