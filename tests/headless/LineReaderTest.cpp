#include "shells/headless/InputLoop.hpp"

#include <gtest/gtest.h>

namespace headless {
namespace {

constexpr auto noLine = std::nullopt;

InputLine line(std::string text) {
    return {std::move(text), LineFit::Fits};
}

TEST(LineReader, WaitsForTheEndOfALine) {
    LineReader reader;
    reader.append("tr");
    EXPECT_EQ(reader.next(), noLine);
    reader.append("ee\nqu");
    EXPECT_EQ(reader.next(), line("tree"));
    EXPECT_EQ(reader.next(), noLine);
}

TEST(LineReader, FindsEveryLineOfOnePiece) {
    LineReader reader;
    reader.append("a\n\nb\n");
    EXPECT_EQ(reader.next(), line("a"));
    EXPECT_EQ(reader.next(), line(""));
    EXPECT_EQ(reader.next(), line("b"));
    EXPECT_EQ(reader.next(), noLine);
}

TEST(LineReader, TakesTheLastLineWithoutItsEnd) {
    LineReader reader;
    reader.append("a\nquit");
    reader.endOfInput();
    EXPECT_EQ(reader.next(), line("a"));
    EXPECT_EQ(reader.next(), line("quit"));
    EXPECT_EQ(reader.next(), noLine);
}

TEST(LineReader, MakesNoLineOfAnEndedInput) {
    LineReader reader;
    reader.append("a\n");
    reader.endOfInput();
    EXPECT_EQ(reader.next(), line("a"));
    EXPECT_EQ(reader.next(), noLine);
}

TEST(LineReader, TakesALineOfTheGreatestLengthAndNoLongerOne) {
    LineReader reader;
    const std::string longest(maximumLineBytes, 'x');
    reader.append(longest + "\n");
    EXPECT_EQ(reader.next(), line(longest));
    reader.append(longest + "x\nshort\n");
    EXPECT_EQ(reader.next(), (InputLine{"", LineFit::TooLong}));
    EXPECT_EQ(reader.next(), line("short"));
}

TEST(LineReader, CountsALineThatComesInPieces) {
    LineReader reader;
    const std::string piece(maximumLineBytes / 2, 'x');
    for (int i = 0; i < 5; ++i)
        reader.append(piece);
    EXPECT_EQ(reader.next(), noLine);
    reader.endOfInput();
    EXPECT_EQ(reader.next(), (InputLine{"", LineFit::TooLong}));
}

}  // namespace
}  // namespace headless
