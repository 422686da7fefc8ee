#include "tests/support/Golden.hpp"
#include "tests/support/GoldenVariants.hpp"
#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int cairo16 = CAIRO_VERSION_ENCODE(1, 16, 0);
constexpr int cairo18 = CAIRO_VERSION_ENCODE(1, 18, 4);
constexpr int cairo20 = CAIRO_VERSION_ENCODE(1, 20, 0);

/// Upright strokes of a glyph, 2.6 pixels wide each, that begin somewhere in their pixels.
std::uint32_t strokes(double begin, int x) {
    const double from = std::max<double>(x, begin + 8 * (x / 8));
    const double to = std::min<double>(x + 1, begin + 8 * (x / 8) + 2.6);
    const auto covered = std::uint32_t(std::max(0.0, to - from) * 255);
    return 0x01010101 * covered;
}

/// A picture with a thumb and some letters, which blesses and compares itself.
class GoldenVariant : public testing::Test {
 public:
    GoldenVariant() { std::filesystem::create_directory(folder.path("references")); }

    Paper painted(double glyphsAt, double thumbAt = 20, UIColor thumb = UIColor::whiteColor()) {
        Paper paper(80, 60, 2);
        paper.canvas().fill(CGRectMake(0, 0, 80, 60), UIColor::blackColor());
        paper.canvas().fillRounded(CGRectMake(CGFloat(thumbAt), 30, 28, 28), 14, thumb);
        const painting::CairoBitmap letters =
            bitmapOf(48, 16, [=](int x, int) { return strokes(glyphsAt, x); });
        paper.canvas().drawBitmap(letters, CGRectMake(0, 0, 48, 16), CGRectMake(5, 5, 24, 8), {});
        return paper;
    }
    testing::AssertionResult match(Paper paper, int rasteriser, bool bless = false) {
        const GoldenPlaces places{folder.path("references"), folder.path("output"), bless,
                                  rasteriser};
        return matchesGoldenIn(places, paper.surface(), "picture");
    }
    void bless(Paper paper, int rasteriser) {
        ASSERT_TRUE(match(std::move(paper), rasteriser, true));
    }
    std::string file(const std::string& name) { return folder.path("references/" + name); }
    std::string variant() { return file("picture.cairo-1.18.png"); }
    bool differsAtEdgesAlone(Paper other) {
        bless(painted(1), cairo16);
        bless(std::move(other), cairo18);
        return bool(differAtGlyphEdgesAlone(file("picture.png"), variant()));
    }

    TemporaryFolder folder;
};

TEST_F(GoldenVariant, IsForItsReleaseAndEveryLaterOne) {
    bless(painted(1), cairo16);
    bless(painted(1.5), cairo18);
    for (const int release : {CAIRO_VERSION_ENCODE(1, 14, 0), cairo16}) {
        EXPECT_TRUE(match(painted(1), release));
        EXPECT_FALSE(match(painted(1.5), release));
    }
    for (const int release :
         {CAIRO_VERSION_ENCODE(1, 17, 8), cairo18, cairo20, CAIRO_VERSION_ENCODE(2, 0, 0)}) {
        EXPECT_FALSE(match(painted(1), release));
        EXPECT_TRUE(match(painted(1.5), release));
    }
}

TEST_F(GoldenVariant, GivesWayToTheOneOfALaterRelease) {
    bless(painted(1), cairo16);
    bless(painted(1.5), cairo18);
    bless(painted(1.25), cairo20);
    EXPECT_TRUE(match(painted(1.5), cairo18));
    EXPECT_TRUE(match(painted(1.25), cairo20));
    EXPECT_TRUE(std::filesystem::exists(file("picture.cairo-1.20.png")));
}

TEST_F(GoldenVariant, IsNotKeptWhenItIsTheSameAsAnOlderPicture) {
    bless(painted(1), cairo16);
    bless(painted(1), cairo18);
    EXPECT_FALSE(std::filesystem::exists(variant()));
    bless(painted(1.5), cairo18);
    EXPECT_TRUE(std::filesystem::exists(variant()));
    bless(painted(1), cairo18);
    EXPECT_FALSE(std::filesystem::exists(variant()));
    EXPECT_TRUE(match(painted(1), cairo18));
}

TEST_F(GoldenVariant, IsNotMistakenForThatOfALongerName) {
    bless(painted(1), cairo16);
    std::filesystem::copy_file(file("picture.png"), file("picture-held.cairo-1.18.png"));
    std::filesystem::copy_file(file("picture.png"), file("picture.cairo-one.png"));
    bless(painted(1), cairo18);
    EXPECT_EQ(GoldenVariants::variantsIn(folder.path("references")),
              (std::vector<std::string>{"picture-held.cairo-1.18.png"}));
}

TEST_F(GoldenVariant, MayHaveItsGlyphsHalfAPixelAway) {
    EXPECT_TRUE(differsAtEdgesAlone(painted(1.5)));
    EXPECT_TRUE(differsAtEdgesAlone(painted(0.5)));
    EXPECT_TRUE(differsAtEdgesAlone(painted(1.25)));
}

TEST_F(GoldenVariant, MayNotDifferInAnythingElse) {
    EXPECT_FALSE(differsAtEdgesAlone(painted(3))) << "other glyphs";
    EXPECT_FALSE(differsAtEdgesAlone(painted(1, 20.5))) << "a thumb that moved by a pixel";
    EXPECT_FALSE(differsAtEdgesAlone(painted(1, 19.5)));
    EXPECT_FALSE(differsAtEdgesAlone(painted(1, 20, {1, 1, 0.98, 1}))) << "another colour";
    EXPECT_FALSE(differsAtEdgesAlone(Paper(80, 61, 2))) << "another size";
}

// Its name lets scripts/bless-golden run it when all releases have painted.
TEST(PictureVariants, DifferFromTheUnmarkedPicturesAtGlyphEdgesAlone) {
    const std::string folder = TARNWICK_GOLDEN_DIR "/";
    const std::vector<std::string> variants = GoldenVariants::variantsIn(folder);
    ASSERT_FALSE(variants.empty());
    for (const std::string& variant : variants) {
        EXPECT_TRUE(
            differAtGlyphEdgesAlone(folder + GoldenVariants::unmarked(variant), folder + variant));
    }
}

}  // namespace
