#include "tests/support/Golden.hpp"
#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

namespace {

constexpr UIColor background = {28.0 / 255, 28.0 / 255, 30.0 / 255, 1};
constexpr UIColor ink = {0.93, 0.93, 0.95, 1};
constexpr UIColor accent = {0.04, 0.52, 1, 1};

void paintShapes(Canvas& canvas) {
    canvas.fill(CGRectMake(10, 10, 40, 30), accent);
    canvas.fillRounded(CGRectMake(60, 10, 40, 30), 8, accent);
    canvas.fillRounded(CGRectMake(110, 10, 40, 30), 1000, accent);
    canvas.fillRounded(CGRectMake(160, 10, 30, 30), 15, accent.colorWithAlpha(0.5));
    canvas.strokeRounded(CGRectMake(10, 50, 40, 30), 0, 2, ink);
    canvas.strokeRounded(CGRectMake(60, 50, 40, 30), 8, 1, ink);
    canvas.strokeRounded(CGRectMake(110, 50, 40, 30), 15, 3, ink);
    canvas.strokeRounded(CGRectMake(160, 50, 30, 30), 15, 0.5, ink);
}

void paintShadows(Canvas& canvas) {
    const CGRect circle = CGRectMake(215, 12, 27, 27);
    canvas.fillShadow(CGRectOffset(circle, 0, 2), 14, 4, UIColor::blackColor());
    canvas.fillRounded(circle, 14, ink);
    const CGRect card = CGRectMake(215, 52, 60, 26);
    canvas.fillShadow(CGRectOffset(card, 0, 2), 6, 4, UIColor::blackColor());
    canvas.fillRounded(card, 6, ink);
    canvas.fillShadow(CGRectMake(265, 15, 40, 20), 4, 8, accent);
}

void paintBitmaps(Canvas& canvas) {
    const painting::CairoBitmap disc = bitmapOf(16, 16, [](int x, int y) {
        const int distance = (2 * x - 15) * (2 * x - 15) + (2 * y - 15) * (2 * y - 15);
        return distance > 225 ? 0U : 0xff000000U | std::uint32_t(0x0f0f0f * (y + 1));
    });
    const CGRect all = CGRectMake(0, 0, 16, 16);
    canvas.drawBitmap(disc, all, CGRectMake(10, 92, 16, 16), {});
    canvas.drawBitmap(disc, all, CGRectMake(36, 92, 8, 8), {});
    canvas.drawBitmap(disc, all, CGRectMake(54, 92, 32, 32), {});
    canvas.drawBitmap(disc, all, CGRectMake(96, 92, 32, 32), UIColor::orangeColor());
    canvas.drawBitmap(disc, CGRectMake(4, 4, 8, 8), CGRectMake(138, 92, 60, 16), {});
}

TEST(GoldenPrimitives, AreTheSameAtEveryScale) {
    for (const int scale : {1, 2, 3}) {
        Paper paper(320, 135, scale);
        paper.canvas().fill(CGRectMake(0, 0, 320, 135), background);
        paintShapes(paper.canvas());
        paintShadows(paper.canvas());
        paintBitmaps(paper.canvas());
        EXPECT_TRUE(matchesGolden(paper.surface(), "primitives@" + std::to_string(scale) + "x"));
    }
}

TEST(GoldenLabels, AreTheSameAtBothScales) {
    const char* texts[] = {
        "Ringtone: 80%",
        "Media (Speaker): 35%",
        "Jy Ångström ÀÉÎ ĝ: 100%",
        "A caption that is far too long for its row, so that its middle is left out: 12%",
        "مستوى الصوت: 50%",
        "Громкость, Ένταση",
        "a\tb\nc \xff d",
    };
    for (const int scale : {1, 2}) {
        Paper paper(320, 160, scale);
        paper.canvas().fill(CGRectMake(0, 0, 320, 160), background);
        CGFloat y = 5;
        for (const char* text : texts) {
            paper.canvas().drawText(text, UIFont::systemFontOfSize(12), ink,
                                    CGRectMake(20, y, 280, 15), NSTextAlignment::Natural);
            y += 20;
        }
        paper.canvas().drawText("Centred", UIFont::systemFontOfSize(17), accent,
                                CGRectMake(0, y - 2, 320, 20), NSTextAlignment::Center);
        EXPECT_TRUE(matchesGolden(paper.surface(), "labels@" + std::to_string(scale) + "x"));
    }
}

}  // namespace
