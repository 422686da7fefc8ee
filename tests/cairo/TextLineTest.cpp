#include "backends/cairo/CaptionLine.hpp"

#include <glib.h>
#include <gtest/gtest.h>

#include <random>

namespace {

using namespace std::string_literals;

struct Line {
    std::string text;
    std::string expected;
};

std::ostream& operator<<(std::ostream& stream, const Line& line) {
    return stream << line.expected;
}

class TextLine : public testing::TestWithParam<Line> {};

TEST_P(TextLine, IsOneLineOfValidText) {
    EXPECT_EQ(painting::displayableLine(GetParam().text, 100), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, TextLine,
                         testing::Values(Line{"", ""}, Line{"Ringtone", "Ringtone"},
                                         Line{"Lautstärke 音量 🔊", "Lautstärke 音量 🔊"},
                                         Line{"a\nb\tc\rd", "a b c d"}, Line{"a\0b"s, "a\uFFFDb"},
                                         Line{"\x7f\x1b", "\uFFFD\uFFFD"},
                                         Line{"a\u202Eb\u2067", "a\uFFFDb\uFFFD"},
                                         Line{"a\u0085b", "a b"}, Line{"a\u2028b\u2029c", "a b c"},
                                         Line{"a\xff\x62", "a\uFFFDb"}, Line{"\xc3", "\uFFFD"},
                                         Line{"\xed\xa0\x80x", "\uFFFD\uFFFD\uFFFDx"},
                                         Line{"\xf4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
                                         Line{"\xc0\x80", "\uFFFD\uFFFD"}));

TEST(DisplayableLine, KeepsAsManyCharactersAsItMay) {
    EXPECT_EQ(painting::displayableLine("äöü", 3), "äöü");
    EXPECT_EQ(painting::displayableLine("äöüß", 3), "äöü…");
    EXPECT_EQ(painting::displayableLine("äöü", 0), "…");
    EXPECT_EQ(painting::displayableLine("", 0), "");
}

TEST(DisplayableLine, DoesNotBreakACharacterWhereItCuts) {
    std::string text = "x";
    for (int count = 0; count < 40; ++count)
        text += "🔊";
    for (std::size_t characters = 1; characters < 41; ++characters) {
        const std::string line = painting::displayableLine(text, characters);
        EXPECT_EQ(line.find("\uFFFD"), std::string::npos) << characters;
        EXPECT_EQ(g_utf8_strlen(line.c_str(), -1), long(characters) + 1);
    }
}

TEST(DisplayableLine, IsValidForAnyBytes) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(random() % 40, '\0');
        for (char& byte : bytes)
            byte = char(random());
        const std::string line = painting::displayableLine(bytes, 20);
        EXPECT_TRUE(g_utf8_validate(line.data(), gssize(line.size()), nullptr));
        EXPECT_LE(g_utf8_strlen(line.data(), gssize(line.size())), 21);
    }
}

}  // namespace
