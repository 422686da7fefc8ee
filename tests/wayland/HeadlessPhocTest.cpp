#include "tests/wayland/HeadlessPhoc.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace test {
namespace {

TEST(HeadlessPhoc, ShowsAScreenOfTheSizeThatItIsGiven) {
    rigs::ServerFolder folder;
    const HeadlessPhoc phoc(folder, {.width = 600, .height = 400, .scale = 1});
    const Screenshot picture = phoc.screenshot();
    EXPECT_EQ(picture.width(), 600);
    EXPECT_EQ(picture.height(), 400);
}

TEST(HeadlessPhoc, MovesItsPointerInPointsOfTheScreen) {
    rigs::ServerFolder folder;
    HeadlessPhoc phoc(folder);
    phoc.moveTo(0, 0);
    const Screenshot before = phoc.screenshot();
    phoc.moveTo(phoc.width() / 2, phoc.height() / 2);
    EXPECT_EQ(phoc.width(), 360);
    phoc.click(10, 10);
    phoc.swipe(0, 5, 2);
    EXPECT_EQ(phoc.screenshot().width(), before.width()) << "it still runs";
}

TEST(HeadlessPhoc, LeavesNothingBehind) {
    rigs::ServerFolder folder;
    { const HeadlessPhoc phoc(folder); }
    EXPECT_EQ(folder.programs(), 0);
}

TEST(Screenshot, ReadsThePixelsOfAPicture) {
    const Screenshot picture(std::string("P6\n2 1\n255\n\x01\x02\x03\xFF\xFE\xFD", 17));
    EXPECT_EQ(picture.at(0, 0), 0x010203U);
    EXPECT_EQ(picture.at(1, 0), 0xFFFEFDU);
    EXPECT_EQ(picture.at(2, 0), 0U);
    EXPECT_EQ(picture.at(0, -1), 0U);
}

TEST(Screenshot, RefusesWhatIsNoPicture) {
    EXPECT_THROW(Screenshot(""), std::runtime_error);
    EXPECT_THROW(Screenshot("P5\n2 1\n255\n123456"), std::runtime_error);
    EXPECT_THROW(Screenshot("P6\n2 1\n255\n12345"), std::runtime_error);
}

}  // namespace
}  // namespace test
