#include "tests/support/HeadlessFixture.hpp"

#include <fstream>
#include <iterator>

namespace test {
namespace {

class ReportCommands : public HeadlessFixture {
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

TEST_F(ReportCommands, TreeIsAnEmptyWindowWithoutAView) {
    start();
    EXPECT_EQ(resultOf("tree").dump(),
              R"({"class":"UIWindow","frame":[0,0,0,0],"tag":0,"hidden":false,"subviews":[]})");
}

TEST_F(ReportCommands, TreeReachesFromTheWindowToTheSliders) {
    files.writeCategories({{"Ringtone", "Ringtone"}});
    show();
    const Json window = resultOf("tree");
    EXPECT_EQ(window.at("frame").dump(), "[0,0,320,70]");
    const Json& container = window.at("subviews").at(0);
    EXPECT_EQ(container.at("class"), "UIView");
    EXPECT_EQ(container.at("frame").dump(), "[0,0,320,70]");
    const Json& mixer = container.at("subviews").at(0);
    EXPECT_EQ(mixer.at("class"), "TarnwickView");
    const Json& row = mixer.at("subviews").at(0);
    EXPECT_EQ(row.at("class"), "UIView");
    EXPECT_EQ(row.at("frame").dump(), "[0,10,320,50]");
    EXPECT_EQ(row.at("subviews").at(0).at("class"), "UILabel");
    EXPECT_EQ(row.at("subviews").at(1).at("class"), "UISlider");
    EXPECT_EQ(row.at("subviews").size(), 2U);
}

TEST_F(ReportCommands, TreeTellsEverythingOfALabel) {
    show();
    EXPECT_EQ(viewWithTag(1001).dump(),
              R"({"class":"UILabel","frame":[20,5,300,15],"tag":1001,"hidden":false,)"
              R"("text":"Audio/Video (Speaker): 50%","textColor":[1,1,1,1],)"
              R"("backgroundColor":[0,0,0,0],"fontSize":12,"subviews":[]})");
}

TEST_F(ReportCommands, TreeTellsEverythingOfASlider) {
    files.writeSettings("<key>thumbTintColor</key><integer>7</integer>");
    show();
    EXPECT_EQ(viewWithTag(2001).dump(),
              R"({"class":"UISlider","frame":[20,20,280,30],"tag":2001,"hidden":false,"value":50,)"
              R"("minimumValue":0,"maximumValue":100,"continuous":true,"enabled":true,)"
              R"("highlighted":false,)"
              R"("animating":false,"thumbImage":{"normal":"thumb_default","highlighted":null},)"
              R"("minimumTrackImage":{"normal":null,"highlighted":null},)"
              R"("maximumTrackImage":{"normal":null,"highlighted":null},)"
              R"("minimumValueImage":"speaker_quiet","maximumValueImage":"speaker_loud",)"
              R"("thumbTintColor":[1,0.5,0,1],"minimumTrackTintColor":[1,0,0,1],)"
              R"("maximumTrackTintColor":[1,1,1,1],"subviews":[]})");
}

TEST_F(ReportCommands, TreeTellsTheImagesOfASkin) {
    files.writeSettings("<key>selectedSkin</key><string>Cream Round</string>");
    show();
    const Json slider = viewWithTag(2000);
    EXPECT_EQ(slider.at("thumbImage").dump(),
              R"({"normal":"thumb_cream","highlighted":"thumb_cream_active"})");
    EXPECT_EQ(slider.at("minimumTrackImage").dump(),
              R"({"normal":{"name":"left_track_cream2@2x","capInsets":[0,9,0,9]},)"
              R"("highlighted":null})");
    EXPECT_EQ(slider.at("maximumTrackImage").dump(),
              R"({"normal":{"name":"right_track_cream@2x","capInsets":[0,9,0,9]},)"
              R"("highlighted":{"name":"right_track_cream_highlighted","capInsets":[0,9,0,9]}})");
    EXPECT_EQ(slider.at("minimumValueImage"), "speaker_quiet_cream");
    EXPECT_EQ(slider.at("maximumValueImage"), "speaker_loud_cream");
    EXPECT_TRUE(slider.at("thumbTintColor").is_null());
    EXPECT_TRUE(slider.at("minimumTrackTintColor").is_null());
    EXPECT_TRUE(slider.at("maximumTrackTintColor").is_null());
}

TEST_F(ReportCommands, TreeShowsAMissingTextAsNull) {
    files.write(
        files.categoryFile(),
        R"(<plist version="1.0"><array><dict><key>visible</key><true/></dict></array></plist>)");
    show();
    EXPECT_EQ(viewWithTag(1000).at("text"), "(null): unknown");
}

TEST_F(ReportCommands, PaintWritesThePictureAtItsScale) {
    show();
    EXPECT_EQ(paint().dump(), "[[0,0,320,270]]");
    EXPECT_EQ(bytes().substr(1, 3), "PNG");
    EXPECT_EQ(pictureSize(), (std::pair{320, 270}));
    EXPECT_EQ(paint("2").dump(), "[[0,0,320,270]]");
    EXPECT_EQ(pictureSize(), (std::pair{640, 540}));
    EXPECT_EQ(paint("1.5").dump(), "[[0,0,320,270]]");
    EXPECT_EQ(pictureSize(), (std::pair{480, 405}));
}

TEST_F(ReportCommands, PaintRenewsNothingWithoutAChange) {
    show();
    paint();
    const std::string before = bytes();
    EXPECT_EQ(paint().dump(), "[]");
    EXPECT_EQ(bytes(), before);
    expectOk("notify Ringtone 0.5");
    EXPECT_EQ(paint().dump(), "[]");
}

TEST_F(ReportCommands, PaintRenewsOnlyTheRowThatChanged) {
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

TEST_F(ReportCommands, APictureRenewedInPartsIsTheSameAsAFreshOne) {
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

TEST_F(ReportCommands, PaintRefusesWhatCannotBeAPicture) {
    start({"--parent-width", "100000"});
    EXPECT_EQ(send("paint " + picture()).error(), "there is no view to paint");
    expectOk("create");
    expectOk("call view");
    EXPECT_EQ(send("paint " + picture()).error(), "the picture would be too large");
    for (const char* scale : {"0", "-1", "8.1", "1e9"})
        EXPECT_EQ(send("paint " + picture() + " " + scale).error(),
                  "the scale must lie above 0 and not above 8")
            << scale;
    EXPECT_FALSE(std::filesystem::exists(picture()));
}

TEST_F(ReportCommands, PaintSaysWhenTheFileCannotBeWritten) {
    show();
    for (const char* file : {"/nowhere/picture.png", "\"\"", "/"})
        EXPECT_NE(send(std::string("paint ") + file).error(), "") << file;
    paint();
    EXPECT_EQ(pictureSize(), (std::pair{320, 270}));
}

}  // namespace
}  // namespace test
