#include "backends/plist/Forms.hpp"
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
    EXPECT_TRUE(decoded("<?x \"a\"?><plist version=\"1.0\"><true/></plist>"));
    EXPECT_FALSE(decoded("<?x \"?><plist><true/></plist><?x \"?>"));
    EXPECT_FALSE(decoded("<plist a=\"><true/></plist><!-- \"> -->"));
    EXPECT_FALSE(decoded("<!DOCTYPE plist \"><plist><true/></plist><!-- \"> -->"));
    EXPECT_FALSE(decoded("<plist a=<x><true/></plist>"));
    EXPECT_FALSE(decoded("<plist><true a=\"b\"/></plist>"));
    EXPECT_FALSE(decoded("<plist><array><![CDATA[x]]></array></plist>"));
}

TEST(HostileXml, RefusesADocumentTypeWithDeclarations) {
    EXPECT_FALSE(
        decoded("<!DOCTYPE plist [<!ENTITY a \"aaaa\">]><plist><string>&a;</string></plist>"));
}

TEST(HostileXml, RefusesZeroBytes) {
    EXPECT_FALSE(decodedBody(std::string("<string>a\0b</string>", 20)));
}

TEST(HostileXml, ReadsATextFullOfEntitiesInProportionToItsLength) {
    const std::string entity = "&amp;";
    const int count = static_cast<int>(NSPropertyList::maximumFileBytes / entity.size()) - 10;
    const auto value = decoded("<string>" + repeated(entity, count) + "</string>");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->string()->size(), static_cast<std::size_t>(count));
}

TEST(HostileXml, ReadsTheLargestFileAndRefusesOneByteMore) {
    const std::string start = "<plist><string>";
    const std::string end = "</string></plist>";
    const std::size_t room = NSPropertyList::maximumFileBytes - start.size() - end.size();
    EXPECT_TRUE(decoded(start + std::string(room, 'x') + end));
    EXPECT_FALSE(decoded(start + std::string(room + 1, 'x') + end));
}

TEST(HostileXml, ReadsAFileFullOfSmallValuesAndRefusesOneMore) {
    const int count = static_cast<int>(maximumValues) - 1;  // And the array.
    const auto value = decodedBody("<array>" + repeated("<true/>", count) + "</array>");
    ASSERT_TRUE(value && value->array());
    EXPECT_EQ(value->array()->size(), static_cast<std::size_t>(count));
    EXPECT_FALSE(decodedBody("<array>" + repeated("<true/>", count + 1) + "</array>"));
}

TEST(HostileXml, ReadsTheLargestDictionaryAndRefusesOneEntryMore) {
    const auto entries = [](std::uint64_t count) {
        std::string all;
        for (std::uint64_t i = 0; i < count; ++i)
            all += "<key>" + std::to_string(i) + "</key><true/>";
        return "<dict>" + all + "</dict>";
    };
    EXPECT_TRUE(decodedBody(entries(maximumDictionaryEntries)));
    EXPECT_FALSE(decodedBody(entries(maximumDictionaryEntries + 1)));
}

TEST(HostileXml, ReadsTheLongestListOfCategories) {
    const std::string record =
        "<dict><key>categoryName</key><string>Ringtone</string>"
        "<key>prettyCategoryName</key><string>Tom &amp; Jerry</string>"
        "<key>visible</key><false/></dict>";
    const int count = static_cast<int>(NSPropertyList::maximumFileBytes / record.size()) - 10;
    const auto value = decodedBody("<array>" + repeated(record, count) + "</array>");
    ASSERT_TRUE(value && value->array());
    EXPECT_EQ(value->array()->size(), static_cast<std::size_t>(count));
}

}  // namespace
