#include "tests/support/Golden.hpp"
#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class GoldenLibrary : public testing::Test {
 public:
    GoldenLibrary() {
        std::filesystem::create_directory(folder.path("references"));
        paper.canvas().fill(CGRectMake(0, 0, 100, 100), UIColor::blueColor());
    }

    testing::AssertionResult compare() {
        return matchesGoldenIn(places, paper.surface(), "picture");
    }
    void bless() {
        places.bless = true;
        ASSERT_TRUE(compare());
        places.bless = false;
    }
    void change(int pixels, double blue) {
        paper.canvas().fill(CGRectMake(0, 0, CGFloat(pixels), 1), {0, 0, blue, 1});
    }
    bool written(const std::string& kind) {
        return std::filesystem::exists(folder.path("output/picture." + kind + ".png"));
    }

    TemporaryFolder folder;
    Paper paper{100, 100};
    GoldenPlaces places{.references = folder.path("references"),
                        .output = folder.path("output"),
                        .rasteriser = CAIRO_VERSION_ENCODE(1, 16, 0)};
};

TEST_F(GoldenLibrary, FailsWithoutAReferenceOfItsSize) {
    EXPECT_FALSE(compare());
    EXPECT_TRUE(written("actual"));
    EXPECT_FALSE(std::filesystem::exists(folder.path("references/picture.png")));
    bless();
    Paper other(100, 101);
    EXPECT_FALSE(matchesGoldenIn(places, other.surface(), "picture"));
    std::filesystem::resize_file(folder.path("references/picture.png"), 30);
    EXPECT_FALSE(compare()) << "a broken one";
}

TEST_F(GoldenLibrary, PassesAsManyDifferingPixelsAsDeclaredAndNoneMore) {
    bless();
    change(10, 0);
    EXPECT_TRUE(compare());
    change(11, 0);
    EXPECT_FALSE(compare());
    EXPECT_TRUE(written("actual"));
    EXPECT_TRUE(written("diff"));
    EXPECT_NE(std::string(compare().message()).find("11 of 10000"), std::string::npos);
}

TEST_F(GoldenLibrary, PassesSmallDifferencesEverywhere) {
    bless();
    paper.canvas().fill(CGRectMake(0, 0, 100, 100), {0, 0, 253 / 255.0, 1});
    EXPECT_TRUE(compare());
    paper.canvas().fill(CGRectMake(0, 0, 100, 100), {0, 0, 252 / 255.0, 1});
    EXPECT_FALSE(compare());
}

}  // namespace
