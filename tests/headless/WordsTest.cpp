#include "shells/headless/Words.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace headless {
namespace {

using Texts = std::vector<std::string>;

Texts textsOf(std::string_view line) {
    const auto words = splitWords(line);
    EXPECT_TRUE(words) << line;
    Texts texts;
    for (const Word& word : words ? *words : std::vector<Word>())
        texts.push_back(word.text);
    return texts;
}

std::string refusalOf(std::string_view line) {
    const auto words = splitWords(line);
    return words ? "none" : words.error();
}

TEST(Words, AreSeparatedByAnyNumberOfBlanks) {
    EXPECT_EQ(textsOf("a b"), (Texts{"a", "b"}));
    EXPECT_EQ(textsOf("  a \t  b\t"), (Texts{"a", "b"}));
    EXPECT_EQ(textsOf("a b\r"), (Texts{"a", "b"}));
}

TEST(Words, AreNoneInALineOfBlanks) {
    EXPECT_EQ(textsOf(""), Texts{});
    EXPECT_EQ(textsOf(" \t \r"), Texts{});
}

TEST(Words, HoldBlanksInQuotationMarks) {
    EXPECT_EQ(textsOf(R"(route "Audio/Video" "My  Speaker")"),
              (Texts{"route", "Audio/Video", "My  Speaker"}));
    EXPECT_EQ(textsOf("\"\""), Texts{""});
}

TEST(Words, HoldAMarkThatIsDoubledInQuotationMarks) {
    EXPECT_EQ(textsOf(R"("a ""b"" c")"), Texts{R"(a "b" c)"});
    EXPECT_EQ(textsOf(R"("""")"), Texts{R"(")"});
}

TEST(Words, ReadABackslashLiterally) {
    EXPECT_EQ(textsOf(R"("C:\" \n)"), (Texts{R"(C:\)", R"(\n)"}));
}

TEST(Words, RememberWhetherTheyWereQuoted) {
    const auto words = splitWords(R"(- "-")");
    ASSERT_TRUE(words);
    ASSERT_EQ(words->size(), 2U);
    EXPECT_TRUE((*words)[0].isBare("-"));
    EXPECT_FALSE((*words)[1].isBare("-"));
}

TEST(Words, RefuseMarksThatDoNotFit) {
    EXPECT_EQ(refusalOf("a \"b"), "a quotation mark is not closed");
    EXPECT_EQ(refusalOf("\""), "a quotation mark is not closed");
    EXPECT_EQ(refusalOf("\"\"\""), "a quotation mark is not closed");
    EXPECT_EQ(refusalOf("\"a\"b"), "a blank is missing after a quoted word");
    EXPECT_EQ(refusalOf("a\"b\""), "a quotation mark inside a word");
}

TEST(Words, RefuseANullByte) {
    EXPECT_EQ(refusalOf(std::string_view("a\0b", 3)), "a line cannot hold a null byte");
}

TEST(Words, KeepBytesThatAreNoText) {
    EXPECT_EQ(textsOf("\xff\xfe \x80"), (Texts{"\xff\xfe", "\x80"}));
}

TEST(Number, IsDecimalWithFractionAndExponent) {
    EXPECT_EQ(numberFrom({"0.376"}), 0.376);
    EXPECT_EQ(numberFrom({"-12"}), -12);
    EXPECT_EQ(numberFrom({"5e-1"}), 0.5);
    EXPECT_EQ(numberFrom({"1.7976931348623157e308"}), 1.7976931348623157e308);
}

TEST(Number, IsNothingElse) {
    for (const char* text : {"", " ", "-", "+1", "1x", "x1", "0x10", "1,5", "1 ", "nan", "inf",
                             "-inf", "infinity", "1e309", "-1e309", "1e", "٣", "--1"})
        EXPECT_EQ(numberFrom({text}), std::nullopt) << text;
}

TEST(YesNo, IsOneOfTheTwoBareWords) {
    EXPECT_EQ(yesNoFrom({"yes"}), YesNo::Yes);
    EXPECT_EQ(yesNoFrom({"no"}), YesNo::No);
    for (const char* text : {"", "Yes", "NO", "y", "true", "1"})
        EXPECT_EQ(yesNoFrom({text}), std::nullopt) << text;
    EXPECT_EQ(yesNoFrom({"yes", true}), std::nullopt);
}

TEST(ParentWidth, LiesBetweenNothingAndAHundredThousandPoints) {
    EXPECT_EQ(parentWidthFrom({"0"}), 0);
    EXPECT_EQ(parentWidthFrom({"767.5"}), 767.5);
    EXPECT_EQ(parentWidthFrom({"100000"}), 100000);
    EXPECT_EQ(parentWidthFrom({"-0.1"}), std::nullopt);
    EXPECT_EQ(parentWidthFrom({"100000.1"}), std::nullopt);
    EXPECT_EQ(parentWidthFrom({"wide"}), std::nullopt);
}

}  // namespace
}  // namespace headless
