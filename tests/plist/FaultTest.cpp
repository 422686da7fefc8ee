#include "tests/plist/BinaryPlist.hpp"
#include "tests/plist/Xml.hpp"

#include <gtest/gtest.h>

namespace {

PropertyListFault faultOf(const std::string& bytes) {
    const DecodedPropertyList decoded = PlistCodec().decode(bytes);
    EXPECT_FALSE(decoded) << bytes;
    return decoded ? PropertyListFault() : decoded.error();
}

std::string textOf(const PropertyListFault& fault) {
    return std::to_string(fault.place.line) + ":" + std::to_string(fault.place.column) + ": " +
           fault.reason;
}

/// As somebody writes it by hand.
const std::string handWritten =
    "<?xml version=\"1.0\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" \"http://x/y.dtd\">\n"
    "<plist version=\"1.0\">\n"
    "<array>\n"
    "    <dict>\n"
    "        <key>categoryName</key>       <string>Audio/Video</string>\n"
    "        <key>prettyCategoryName</key> <string>Tom &amp; <!-- and --> Jerry</string>\n"
    "        <key>visible</key>            <true/>\n"
    "    </dict>\n"
    "    <dict><key>visible</key><false/></dict>\n"
    "</array>\n"
    "</plist>\n";

std::string handWrittenWith(const std::string& before, const std::string& after) {
    std::string changed = handWritten;
    return changed.replace(changed.find(before), before.size(), after);
}

TEST(PlistFault, SaysWhereAndWhy) {
    struct Case {
        std::string bytes;
        std::string fault;
    };
    const Case cases[] = {
        {handWrittenWith("&amp;", "&"), "7:51: a bare '&', which is written '&amp;'"},
        {handWrittenWith("    </dict>\n", ""),
         "9:5: a value without a key, in the <dict> of line 5"},
        {handWrittenWith("</dict>\n</array>", "\n</array>"),
         "11:1: the wrong end tag: only </dict> closes the <dict> of line 10"},
        {handWrittenWith("</array>\n</plist>\n", ""),
         "11:1: the file ends before </array> closes the <array> of line 4"},
        {handWrittenWith("Audio/Video</string>", "Audio/Video</strin>"),
         "6:58: the wrong end tag: only </string> closes the <string> of line 6"},
        {handWrittenWith("Audio/Video</string>", "Audio/Video"),
         "7:9: a tag inside <string>; a '<' is written '&lt;'"},
        {handWrittenWith("<true/>", "<yes/>"),
         "8:39: there is no element <yes> in a property list"},
        {handWrittenWith("<key>visible</key>            <true/>", "<true/>"),
         "8:9: a value without a key, in the <dict> of line 5"},
        {handWrittenWith("<true/>", "<true"), "8:39: a tag without its '>'"},
        {handWrittenWith("<true/>", "true"), "8:39: text where a tag was expected"},
        {handWrittenWith("<string>Audio", "<key>Audio</key><true/><string>"),
         "6:55: two keys before one value, in the <dict> of line 5"},
        {"", "1:1: there is no value in the file"},
        {"<plist>\n</plist>\n", "3:1: there is no value in the file"},
        {"categories:\n", "1:1: text where a tag was expected"},
        {"\xEF\xBB\xBF\n<plist>\n<array>é\n", "3:8: text where a tag was expected"},
        {"<plist>\n<string>ééé & è</string></plist>", "2:13: a bare '&', which is written '&amp;'"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(textOf(faultOf(each.bytes)), each.fault);
}

TEST(PlistFault, IsPlacedWheneverALetterIsMissingOrWrong) {
    ASSERT_TRUE(decoded(handWritten));
    int faults = 0;
    for (std::size_t at = 0; at < handWritten.size(); ++at) {
        for (const std::string with : {"", "<", "&", "/", "\""}) {
            std::string damaged = handWritten;
            damaged.replace(at, 1, with);
            if (decoded(damaged)) continue;
            const PropertyListFault fault = faultOf(damaged);
            EXPECT_GT(fault.place.line, 0) << damaged << fault.reason;
            ++faults;
        }
    }
    EXPECT_GT(faults, 500);
}

TEST(PlistFault, OfABinaryListNamesTheObject) {
    BinaryPlist circle;
    circle.addArray({0});
    EXPECT_EQ(textOf(faultOf(circle.file())),
              "0:0: object 0 of the binary list is damaged, or stands for more than can be read");
    EXPECT_EQ(textOf(faultOf("bplist00")), "0:0: the binary list's header or trailer is damaged");
}

std::vector<TextPlace> places(const std::string& bytes,
                              const std::vector<PropertyListPath>& paths) {
    return PlistCodec().placesOf(bytes, paths);
}

TEST(PlistPlaces, AreThoseOfElementsAndOfTheKeysOfEntries) {
    EXPECT_EQ(places(handWritten, {{}, {"0"}, {"1"}, {"0", "categoryName"}, {"1", "visible"}}),
              (std::vector<TextPlace>{{4, 1}, {5, 5}, {10, 5}, {6, 9}, {10, 11}}));
    EXPECT_EQ(places("<array><array><true/></array><dict><key>a</key>\n<array><true/><true/>"
                     "</array></dict></array>",
                     {{"0", "0"}, {"1", "a", "1"}}),
              (std::vector<TextPlace>{{1, 15}, {2, 15}}));
}

TEST(PlistPlaces, AreThoseOfTheLastOfTwoEqualKeys) {
    EXPECT_EQ(places("<dict><key>a</key><true/>\n<key>a</key><false/></dict>", {{"a"}}),
              (std::vector<TextPlace>{{2, 1}}));
}

TEST(PlistPlaces, AreNowhereForWhatIsNotThere) {
    EXPECT_EQ(places(handWritten, {{"7"}, {"0", "nothing"}}), std::vector<TextPlace>(2));
    BinaryPlist binary;
    binary.addArray({});
    EXPECT_EQ(places(binary.file(), {{}}), std::vector<TextPlace>(1));
    EXPECT_EQ(places("no list", {{}}), std::vector<TextPlace>(1));
}

}  // namespace
