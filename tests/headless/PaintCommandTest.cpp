#include "tests/support/HeadlessFixture.hpp"

#include <fstream>
#include <iterator>

namespace test {
namespace {

class PaintCommand : public HeadlessFixture {
 protected:
    void show() {
        start({"--parent-width", "320"});
        expectOk("create");
        expectOk("call view");
    }
    std::string picture() const { return (files.folder() / "picture.png").string(); }
    Json paint(const std::string& scale = "") {
        const Reply reply = send("paint " + picture() + " " + scale);
        EXPECT_TRUE(reply.isOk()) << reply.error();
        return reply.line.value("damage", Json());
    }
    std::string bytes() const {
        std::ifstream stream(picture(), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    /// The width or height that the picture's header tells.
    int headerNumber(std::size_t offset) const {
        const std::string file = bytes();
        int number = 0;
        for (std::size_t i = offset; i < offset + 4; ++i)
            number = number * 256 + static_cast<unsigned char>(file.at(i));
        return number;
    }
    std::pair<int, int> pictureSize() const { return {headerNumber(16), headerNumber(20)}; }
};

TEST_F(PaintCommand, WritesThePictureAtItsScale) {
    show();
    EXPECT_EQ(paint().dump(), "[[0,0,320,270]]");
    EXPECT_EQ(bytes().substr(1, 3), "PNG");
    EXPECT_EQ(pictureSize(), (std::pair{320, 270}));
    EXPECT_EQ(paint("2").dump(), "[[0,0,320,270]]");
    EXPECT_EQ(pictureSize(), (std::pair{640, 540}));
    EXPECT_EQ(paint("1.5").dump(), "[[0,0,320,270]]");
    EXPECT_EQ(pictureSize(), (std::pair{480, 405}));
}

TEST_F(PaintCommand, RenewsNothingWithoutAChange) {
    show();
    paint();
    const std::string before = bytes();
    EXPECT_EQ(paint().dump(), "[]");
    EXPECT_EQ(bytes(), before);
    expectOk("notify Ringtone 0.5");
    EXPECT_EQ(paint().dump(), "[]");
}

TEST_F(PaintCommand, RenewsOnlyTheRowThatChanged) {
    show();
    paint();
    const std::string before = bytes();
    expectOk("volume HeadsetBT 0.9");
    const Json damage = paint();
    ASSERT_FALSE(damage.empty());
    constexpr double thumbReach = 10;  // Points that a thumb and its shadow may stand out.
    for (const Json& rectangle : damage) {
        EXPECT_GE(rectangle.at(1).get<double>(), 110 - thumbReach);
        EXPECT_LE(rectangle.at(1).get<double>() + rectangle.at(3).get<double>(), 160 + thumbReach);
    }
    EXPECT_NE(bytes(), before);
}

TEST_F(PaintCommand, APictureRenewedInPartsIsTheSameAsAFreshOne) {
    show();
    for (const char* scale : {"1", "1.25", "2"}) {
        paint(scale);
        expectOk("volume Ringtone 0.9");
        expectOk("touch began 160 195");
        expectOk("touch moved 120 195");
        paint(scale);
        const std::string renewed = bytes();
        expectOk("touch ended 120 195");
        expectOk("volume HeadphonesBT 0.1");
        paint(scale);
        const std::string again = bytes();
        paint("3");
        paint(scale);
        EXPECT_EQ(bytes(), again) << scale;
        EXPECT_NE(renewed, again) << scale;
        expectOk("volume Ringtone 0.2");
    }
}

TEST_F(PaintCommand, SaysWhenTheFileCannotBeWritten) {
    show();
    for (const char* file : {"/nowhere/picture.png", "\"\"", "/"})
        EXPECT_NE(send(std::string("paint ") + file).error(), "") << file;
    paint();
    EXPECT_EQ(pictureSize(), (std::pair{320, 270}));
}

}  // namespace
}  // namespace test
