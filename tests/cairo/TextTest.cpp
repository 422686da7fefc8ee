#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr CGRect caption{{20, 5}, {280, 15}};
const UIFont twelve = UIFont::systemFontOfSize(12);

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int count = 0; count < times; ++count)
        result += text;
    return result;
}

void draw(Paper& paper, const std::string& text, const CGRect& rect = caption,
          NSTextAlignment alignment = NSTextAlignment::Natural) {
    paper.canvas().drawText(text, twelve, UIColor::whiteColor(), rect, alignment);
}

// What a text looks like, as a number, to tell one from another.
std::size_t pixels(const Paper& paper) {
    std::string result;
    for (int y = 0; y < paper.pixelsHigh(); ++y) {
        for (int x = 0; x < paper.pixelsWide(); ++x)
            result += char(paper.alphaAt(x, y));
    }
    return std::hash<std::string>()(result);
}

std::size_t pixelsOf(const std::string& text, const CGRect& rect = caption) {
    Paper paper(320, 25);
    draw(paper, text, rect);
    return pixels(paper);
}

TEST(CairoText, BeginsAtTheLeftAndIsCentredVertically) {
    Paper paper(320, 25);
    draw(paper, "Hx");
    EXPECT_NEAR(paper.firstInkedColumn(), 21, 1);
    EXPECT_LT(paper.lastInkedColumn(), 40);
    // The capital H of 12 points is 9 pixels high and stands on the baseline.
    EXPECT_NEAR(paper.firstInkedRow(), 8, 1);
    EXPECT_NEAR(paper.lastInkedRow(), 16, 1);
}

TEST(CairoText, StandsOnOneBaselineWhateverItSays) {
    Paper plain(320, 25);
    draw(plain, "H");
    for (const std::string other : {"Hx", "H: 50%", "HEL", "H é"}) {
        Paper paper(320, 25);
        draw(paper, other);
        EXPECT_EQ(paper.lastInkedRow(), plain.lastInkedRow()) << other;
    }
    const CGRect fractional{{20, 5.3F}, {280, 15.2F}};
    Paper shifted(320, 25);
    draw(shifted, "H", fractional);
    EXPECT_EQ(shifted.at(shifted.firstInkedColumn() + 1, shifted.lastInkedRow()),
              plain.at(plain.firstInkedColumn() + 1, plain.lastInkedRow()));
}

TEST(CairoText, KeepsItsBaselineBesideLettersOfAnotherFont) {
    const auto lastRowOfH = [](const std::string& text) {
        Paper paper(320, 25);
        draw(paper, text);
        int last = -1;
        for (int y = 0; y < 25; ++y) {
            if (paper.alphaAt(paper.firstInkedColumn() + 1, y)) last = y;
        }
        return last;
    };
    EXPECT_EQ(lastRowOfH("H 音量 🔊"), lastRowOfH("H"));
}

TEST(CairoText, IsTwiceAsLargeInPixelsAtScaleTwo) {
    Paper once(320, 25);
    draw(once, "Ringtone: 50%");
    Paper twice(320, 25, 2);
    draw(twice, "Ringtone: 50%");
    EXPECT_NEAR(twice.lastInkedColumn() - twice.firstInkedColumn(),
                2 * (once.lastInkedColumn() - once.firstInkedColumn()), 5);
    EXPECT_NEAR(twice.firstInkedRow(), 2 * once.firstInkedRow(), 2);
}

TEST(CairoText, IsCentredOnRequest) {
    Paper paper(320, 25);
    draw(paper, "xx", CGRectMake(0, 0, 320, 25), NSTextAlignment::Center);
    EXPECT_NEAR((paper.firstInkedColumn() + paper.lastInkedColumn()) / 2.0, 159.5, 1);
}

TEST(CairoText, OfAScriptFromTheRightBeginsAtTheRight) {
    Paper paper(320, 25);
    draw(paper, "مستوى الصوت");
    EXPECT_NEAR(paper.lastInkedColumn(), 299, 2);
    EXPECT_GT(paper.firstInkedColumn(), 200);
}

TEST(CairoText, IsNotMovedByItsOwnWidth) {
    EXPECT_EQ(pixelsOf("H"), pixelsOf("H "));
}

TEST(CairoText, EndsWithAnEllipsisWhereItDoesNotFit) {
    const std::string long1 = repeated("Ringtone ", 111) + "x";
    Paper paper(320, 25);
    draw(paper, long1);
    EXPECT_LE(paper.lastInkedColumn(), 299);
    EXPECT_GT(paper.lastInkedColumn(), 280);
    // What lies behind the ellipsis cannot be seen; what lies before it can.
    EXPECT_EQ(pixelsOf(long1), pixelsOf(repeated("Ringtone ", 110)));
    EXPECT_NE(pixelsOf(long1), pixelsOf(std::string("King").append(long1)));
    // Dots at the end: nothing but the baseline's rows in the last columns.
    EXPECT_GT(paper.inked(285, 300), 0);
    EXPECT_LT(paper.inked(285, 300), 25);
}

TEST(CairoText, EndsWithAnEllipsisInEveryScript) {
    for (const std::string word : {"音量", "🔊", "مستوى ", "e\u0301", "\xff\xfe", "\n"}) {
        const std::string text = std::string("H").append(repeated(word, 1000));
        EXPECT_EQ(pixelsOf(text), pixelsOf(text + text)) << word;
        EXPECT_NE(pixelsOf(text), pixelsOf("H")) << word;
    }
}

TEST(CairoText, ShowsThatAFloodOfMarksWasCut) {
    const std::string flood = std::string("H").append(repeated("\u0301", 500000));
    const std::string some = std::string("H").append(repeated("\u0301", 10));
    EXPECT_NE(pixelsOf(flood), pixelsOf(some));
}

TEST(CairoText, PaintsNothingForNoText) {
    Paper paper(320, 25);
    draw(paper, "");
    draw(paper, "  \n\t ");
    EXPECT_EQ(paper.inked(), 0);
}

TEST(CairoText, ShowsBytesThatAreNotText) {
    EXPECT_NE(pixelsOf("a\xff\x62"), pixelsOf("ab"));
    EXPECT_EQ(pixelsOf("a\nb"), pixelsOf("a b"));
}

TEST(CairoText, OfAMegabyteIsPaintedAsFastAsAShortOne) {
    using Clock = std::chrono::steady_clock;
    for (const std::string part : {"a", " ", "\u0301", "音", "\xff", "\u202e", "i\u200d", "\n"}) {
        const std::string text = repeated(part, int((1 << 20) / part.size()));
        Paper paper(320, 25);
        draw(paper, part);
        const auto begin = Clock::now();
        draw(paper, text);
        // Shaping it all takes seconds; a hundredth of that leaves room for a slow machine.
        EXPECT_LT(Clock::now() - begin, std::chrono::milliseconds(500)) << part;
    }
}

TEST(CairoText, SurvivesSizesThatAreNone) {
    for (const CGFloat size : {CGFloat(0), CGFloat(-5), CGFloat(1e9), CGFloat(NAN)}) {
        Paper paper(320, 25);
        paper.canvas().drawText("text", UIFont::systemFontOfSize(size), UIColor::redColor(),
                                caption, NSTextAlignment::Natural);
        EXPECT_EQ(cairo_status(paper.context()), CAIRO_STATUS_SUCCESS) << size;
        draw(paper, "H");
        EXPECT_GT(paper.inked(), 0);
    }
}

TEST(CairoText, UsesTheFontThatItIsGiven) {
    Paper large(320, 60);
    large.canvas().drawText("H", UIFont::systemFontOfSize(40), UIColor::redColor(),
                            CGRectMake(0, 0, 320, 60), NSTextAlignment::Natural);
    EXPECT_NEAR(large.lastInkedRow() - large.firstInkedRow(), 29, 2);
    Paper small(320, 60);
    draw(small, "H", CGRectMake(0, 0, 320, 60));
    EXPECT_NEAR(small.lastInkedRow() - small.firstInkedRow(), 9, 2);
}

// Lines are kept to be drawn again.
TEST(CairoText, LooksTheSameWhenItIsDrawnAgain) {
    for (const std::string text : {"H: 50%", "مستوى الصوت", "H 音量 🔊", "\xff", "  "}) {
        painting::CairoText fresh;
        const auto drawn = [&](const std::string& words) {
            Paper paper(320, 25);
            painting::CairoCanvas(paper.context(), 1, fresh)
                .drawText(words, twelve, UIColor::whiteColor(), caption, NSTextAlignment::Natural);
            return pixels(paper);
        };
        const std::size_t first = drawn(text);
        EXPECT_EQ(first, pixelsOf(text)) << text;
        EXPECT_EQ(drawn(text), first) << text;
        for (int other = 0; other < 100; ++other)
            drawn(std::to_string(other));
        EXPECT_EQ(drawn(text), first) << text;
    }
}

TEST(CairoText, OfTheSameWordsFollowsWhateverElseChanges) {
    const std::string text = "Ringtone: 50%";
    const auto drawn = [&](const CGRect& rect, const UIFont& font, NSTextAlignment alignment,
                           double scale) {
        Paper paper(320, 25, scale);
        paper.canvas().drawText(text, font, UIColor::whiteColor(), rect, alignment);
        return pixels(paper);
    };
    const CGRect narrow{{20, 5}, {40, 15}};
    const auto all = [&] {
        const auto natural = NSTextAlignment::Natural;
        return std::vector{drawn(caption, twelve, natural, 1), drawn(narrow, twelve, natural, 1),
                           drawn(caption, UIFont::systemFontOfSize(13), natural, 1),
                           drawn(caption, twelve, NSTextAlignment::Center, 1),
                           drawn(caption, twelve, natural, 2)};
    };
    const std::vector<std::size_t> first = all();
    EXPECT_EQ(std::set(first.begin(), first.end()).size(), first.size()) << "one is as another";
    EXPECT_EQ(all(), first);
}

TEST(CairoText, IsPaintedInTheColorOfTheMoment) {
    Paper paper(320, 25);
    draw(paper, "H");
    Paper other(320, 25);
    other.canvas().drawText("H", twelve, UIColor::redColor(), caption, NSTextAlignment::Natural);
    const Pixel stem = other.at(other.firstInkedColumn() + 1, other.lastInkedRow());
    EXPECT_GT(stem.red, 0);
    EXPECT_EQ(stem.green, 0);
}

TEST(CairoText, FollowsTheDesktopsSmoothing) {
    pixelsOf("Ringtone");
    const painting::CairoFontOptions options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_NONE);
    painting::CairoText::shared().setFontOptions(options.get());
    Paper paper(320, 25);
    draw(paper, "Ringtone");
    painting::CairoText::shared().setFontOptions(nullptr);
    for (int x = 0; x < 320; ++x) {
        for (int y = 0; y < 25; ++y) {
            ASSERT_TRUE(paper.alphaAt(x, y) == 0 || paper.alphaAt(x, y) == 255);
        }
    }
    EXPECT_NE(pixelsOf("Ringtone"), pixels(paper));
}

}  // namespace
