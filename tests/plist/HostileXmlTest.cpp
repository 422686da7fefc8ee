#include "backends/plist/XmlShape.hpp"
#include "tests/plist/Xml.hpp"

#include <gtest/gtest.h>

namespace {

constexpr int deepest = NSPropertyList::maximumDepth;

TEST(HostileXml, ReadsTheDeepestNestingAndRefusesOneMore) {
    EXPECT_TRUE(decodedBody(nestedArrays(deepest)));
    EXPECT_FALSE(decodedBody(nestedArrays(deepest + 1)));
    EXPECT_TRUE(decoded(nestedArrays(deepest)));
    EXPECT_FALSE(decoded(nestedArrays(deepest + 1)));
}

TEST(HostileXml, CountsAnEmptyContainerAsALevelToo) {
    const auto around = [](int depth, const std::string& inside) {
        return repeated("<array>", depth) + inside + repeated("</array>", depth);
    };
    EXPECT_TRUE(decodedBody(around(deepest - 1, "<dict/>")));
    EXPECT_FALSE(decodedBody(around(deepest, "<dict/>")));
    EXPECT_TRUE(decodedBody(around(deepest, "<string>x</string>")));
}

TEST(HostileXml, SurvivesAsManyOpenTagsAsFitInAFile) {
    const int count = static_cast<int>(NSPropertyList::maximumFileBytes / 16);
    EXPECT_FALSE(decodedBody(nestedArrays(count)));
    EXPECT_FALSE(decodedBody(repeated("<array>", count)));
    EXPECT_FALSE(decodedBody(repeated("<dict><key>a</key>", count / 2)));
}

TEST(HostileXml, CannotHideTheDepthInWhatReadersSkip) {
    const int count = 20000;
    for (const char* level :
         {"<array><!-- </array> -->", "<array><![CDATA[</array>]]>", "<array><?x </array>?>",
          "<array><?x \"?></array><?x \"?>", "<array a=\"></array><true b=\"/>",
          "<array><string>a<!--</string></array>--></string>",
          "<array><string>a<![CDATA[</string></array>]]></string>", "<array><!DOCTYPE </array>>",
          "<array><string></string ></array ><array >"}) {
        EXPECT_FALSE(decodedBody(repeated(level, count))) << level;
        EXPECT_FALSE(decodedBody(repeated(level, count) + repeated("</array>", count))) << level;
    }
}

TEST(HostileXml, RefusesMarksThatReadersFindInDifferentPlaces) {
    EXPECT_TRUE(isReadableXml("<?x \"a\"?><plist version=\"1.0\"><true/></plist>"));
    EXPECT_FALSE(isReadableXml("<?x \"?><plist><true/></plist><?x \"?>"));
    EXPECT_FALSE(isReadableXml("<plist a=\"><true/></plist><!-- \"> -->"));
    EXPECT_FALSE(isReadableXml("<!DOCTYPE plist \"><plist><true/></plist><!-- \"> -->"));
    EXPECT_FALSE(isReadableXml("<plist a=<x><true/></plist>"));
    EXPECT_FALSE(isReadableXml("<plist><true a=\"b\"/></plist>"));
    EXPECT_FALSE(isReadableXml("<plist><array><![CDATA[x]]></array></plist>"));
}

TEST(HostileXml, FindsTheDepthBeforeTheLibraryDoes) {
    EXPECT_TRUE(isReadableXml(nestedArrays(deepest)));
    EXPECT_FALSE(isReadableXml(nestedArrays(deepest + 1)));
    EXPECT_FALSE(isReadableXml(documentOf(nestedArrays(deepest + 1))));
}

TEST(HostileXml, RefusesADocumentTypeWithDeclarations) {
    EXPECT_FALSE(
        decoded("<!DOCTYPE plist [<!ENTITY a \"aaaa\">]><plist><string>&a;</string></plist>"));
}

TEST(HostileXml, RefusesZeroBytes) {
    EXPECT_FALSE(decodedBody(std::string("<string>a\0b</string>", 20)));
}

TEST(HostileXml, RefusesMoreEntitiesThanTheLibraryReplacesInReasonableTime) {
    // The entities of one text cost the square of their number; each entity is five bytes here.
    const auto text = [](int entities) {
        return "<string>" + repeated("&amp;", entities) + "</string>";
    };
    EXPECT_EQ(decodedBody(text(20000))->string()->size(), 20000U);
    EXPECT_TRUE(isReadableXml(text(28000)));
    EXPECT_FALSE(isReadableXml(text(28500)));
    // In many texts they cost little.
    EXPECT_TRUE(isReadableXml("<array>" + repeated(text(100), 1500) + "</array>"));
}

TEST(HostileXml, ReadsTheLargestFileAndRefusesOneByteMore) {
    const std::string start = "<plist><string>";
    const std::string end = "</string></plist>";
    const std::size_t room = NSPropertyList::maximumFileBytes - start.size() - end.size();
    EXPECT_TRUE(decoded(start + std::string(room, 'x') + end));
    EXPECT_FALSE(decoded(start + std::string(room + 1, 'x') + end));
}

TEST(HostileXml, ReadsAFileFullOfSmallValues) {
    const int count = static_cast<int>(NSPropertyList::maximumFileBytes / 8);
    const auto value = decodedBody("<array>" + repeated("<true/>", count) + "</array>");
    ASSERT_TRUE(value && value->array());
    EXPECT_EQ(value->array()->size(), static_cast<std::size_t>(count));
}

}  // namespace
