#include "tests/wayland/HeadlessPhoc.hpp"

#include <gtest/gtest.h>

namespace test {
namespace {

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

}  // namespace
}  // namespace test
