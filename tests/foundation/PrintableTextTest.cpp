#include "platform/foundation/PrintableText.hpp"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace std::string_literals;

TEST(PrintableLine, LeavesWhatIsThereToBeRead) {
    for (const char* text : {"", "Ringtone", " Lautstärke: 40% ", "音量 🔊", "e\u0301",
                             "\u05E9\u05DC\u05D5\u05DD", "\u0645\u06CC\u200C\u062E", "a\u200Db",
                             "a\u200Eb\u200F", "\u00A0\u2027\u202F", "\uFFFD", "\U0010FFFD"})
        EXPECT_EQ(printableLine(text), text);
}

TEST(PrintableLine, HasABlankForWhatEndsALineAndForATab) {
    EXPECT_EQ(printableLine("a\nb\tc\rd"), "a b c d");
    EXPECT_EQ(printableLine("a\r\nb"), "a  b");
    EXPECT_EQ(printableLine("a\u0085b\u2028c\u2029d"), "a b c d");
}

TEST(PrintableLine, ReplacesWhatActsOnATerminal) {
    EXPECT_EQ(printableLine("\x1b[31mred"), "\uFFFD[31mred");
    EXPECT_EQ(printableLine("\x1b]0;title\x07"), "\uFFFD]0;title\uFFFD");
    EXPECT_EQ(printableLine("a\0b"s), "a\uFFFDb");
    EXPECT_EQ(printableLine("rm\x7f\x7f"), "rm\uFFFD\uFFFD");
    EXPECT_EQ(printableLine("\u0080\u009B31m\u009F"), "\uFFFD\uFFFD31m\uFFFD");
}

TEST(PrintableLine, ReplacesWhatTurnsTheDirectionOfReading) {
    for (const char* code :
         {"\u202A", "\u202B", "\u202C", "\u202D", "\u202E", "\u2066", "\u2067", "\u2068", "\u2069"})
        EXPECT_EQ(printableLine("a" + std::string(code) + "b"), "a\uFFFDb");
}

TEST(PrintableLine, ReplacesEachByteThatIsNotUtf8) {
    EXPECT_EQ(printableLine("a\xff\x62"), "a\uFFFDb");
    EXPECT_EQ(printableLine("\xc3"), "\uFFFD");
    EXPECT_EQ(printableLine("\xE2\x80"), "\uFFFD\uFFFD");
    EXPECT_EQ(printableLine("\x9b[31m"), "\uFFFD[31m") << "a control character in other charsets";
    EXPECT_EQ(printableLine("\xc0\x8a"), "\uFFFD\uFFFD") << "a line feed, too long";
    EXPECT_EQ(printableLine("\xe0\x80\x8a\xf0\x80\x80\x8a"),
              "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(printableLine("\xed\xa0\x80x"), "\uFFFD\uFFFD\uFFFDx") << "half of a pair";
    EXPECT_EQ(printableLine("\xf4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(printableLine("\xf8\x88\x80\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(PrintableLine, HasNothingUnprintableWhateverTheBytes) {
    std::mt19937 random(1);
    for (int round = 0; round < 5000; ++round) {
        std::string bytes(random() % 40, '\0');
        for (char& byte : bytes)
            byte = char(random());
        const std::string line = printableLine(bytes);
        EXPECT_EQ(printableLine(line), line);
        for (std::string_view rest = line; !rest.empty();) {
            const DecodedCharacter character = firstCharacter(rest);
            EXPECT_FALSE(isUnprintable(character.code));
            EXPECT_TRUE(character.code != 0xFFFD || character.bytes == 3);
            rest.remove_prefix(character.bytes);
        }
    }
}

TEST(EscapedJson, SaysTheSameInPrintableCharacters) {
    EXPECT_EQ(escapedJson(R"({"a":["b\n",1.5]})"), R"({"a":["b\n",1.5]})");
    EXPECT_EQ(escapedJson("\"\x7f\u0080\u009b\""), R"("\u007f\u0080\u009b")");
    EXPECT_EQ(escapedJson("\"a\u202Eb\u2066c\u2069\""), R"("a\u202eb\u2066c\u2069")");
    EXPECT_EQ(escapedJson("\"\u2028\u2029\""), R"("\u2028\u2029")");
    EXPECT_EQ(escapedJson("\"\u00A0é音🔊\u200F\uFFFD\""), "\"\u00A0é音🔊\u200F\uFFFD\"");
}

}  // namespace
