#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

class WidgetControllerSize : public HeadlessFixture {
 protected:
    Json height() { return resultOf("call preferredViewSize").at("height"); }
    void expectHeight(int expected) {
        EXPECT_EQ(height(), expected);
        EXPECT_EQ(resultOf("call viewHeight"), expected);
        EXPECT_EQ(resultOf("call visibleCategoriesCount"), (expected - 20) / 50);
    }
};

struct WidthCase {
    std::string name;
    std::string model;
    std::string parent;
    std::string width;

    friend void PrintTo(const WidthCase& tested, std::ostream* out) { *out << tested.name; }
};

class WidgetControllerWidth : public HeadlessFixture,
                              public testing::WithParamInterface<WidthCase> {};

/// Where coordinates are single themselves, they are written with no more digits than that takes.
std::string asCoordinate(const std::string& width) {
    return sizeof(void*) == 4 && width == "0.10000000149011612" ? "0.1" : width;
}

TEST_P(WidgetControllerWidth, FollowsTheParentAndIsNarrowedOnAWidePad) {
    const WidthCase& tested = GetParam();
    start();
    expectOk("model " + tested.model);
    expectOk("parent " + tested.parent);
    expectOk("create");
    expectOk("call view");
    EXPECT_EQ(resultOf("call preferredViewSize").dump(),
              "{\"width\":" + tested.width + ",\"height\":270}");
    EXPECT_EQ(resultOf("tree").at("frame").dump(), "[0,0," + asCoordinate(tested.width) + ",270]");
}

INSTANTIATE_TEST_SUITE_P(
    On, WidgetControllerWidth,
    testing::Values(WidthCase{"PadWellAboveTheThreshold", "iPad4,1", "1024", "560"},
                    WidthCase{"PadAtTheThreshold", "iPad4,1", "768", "560"},
                    WidthCase{"PadPastTheThreshold", "iPad4,1", "768.5", "560"},
                    WidthCase{"PadBelowTheThreshold", "iPad4,1", "767.5", "767.5"},
                    WidthCase{"NarrowPad", "iPad4,1", "320", "320"},
                    WidthCase{"PadWithoutAParent", "iPad4,1", "none", "0"},
                    WidthCase{"PadOfNoNumber", "iPad", "768", "560"},
                    WidthCase{"PhoneAtTheThreshold", "iPhone6,1", "768", "768"},
                    WidthCase{"WidePhone", "iPhone6,1", "1024", "1024"},
                    WidthCase{"PhoneWithoutWidth", "iPhone6,1", "0", "0"},
                    WidthCase{"PhoneWithoutAParent", "iPhone6,1", "none", "0"},
                    WidthCase{"WidePlayer", "iPod5,1", "1024", "1024"},
                    WidthCase{"PadInSmallLetters", "ipad4,1", "1024", "1024"},
                    WidthCase{"PadNotInFront", "myiPad", "1024", "1024"},
                    // In single precision these are 768 and no longer 0.1.
                    WidthCase{"PadAtTheThresholdInSinglePrecision", "iPad4,1", "767.99999999",
                              "560"},
                    WidthCase{"PhoneInSinglePrecision", "iPhone6,1", "0.1", "0.10000000149011612"}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(WidgetControllerSize, FollowsTheRuleOfATelephoneUntilTheViewIsLoaded) {
    start({"--model", "iPad4,1", "--parent-width", "1024"});
    expectOk("create");
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 1024);
    expectOk("call view");
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 560);
}

TEST_F(WidgetControllerSize, KnowsTheDeviceFromTheLoadingOfItsView) {
    start({"--model", "iPad4,1", "--parent-width", "1024"});
    expectOk("create");
    expectOk("call view");
    expectOk("model iPhone6,1");
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 560);
    expectOk("call hostDidDismiss");
    expectOk("call hostWillPresent");
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 560);
}

TEST_F(WidgetControllerSize, IsThatOfFiveRowsWithoutACategoryFileAndWritesNone) {
    start({"--parent-width", "320"});
    expectOk("create");
    expectHeight(270);
    EXPECT_FALSE(std::filesystem::exists(files.categoryFile()));
}

TEST_F(WidgetControllerSize, IsThatOfFiveRowsWhenTheCategoryFileCannotBeRead) {
    start();
    expectOk("create");
    for (const char* content : {"", "garbage", "<plist version=\"1.0\"><dict/></plist>",
                                "<plist version=\"1.0\"><string>a</string></plist>", "bplist00"}) {
        files.write(files.categoryFile(), content);
        expectHeight(270);
    }
}

TEST_F(WidgetControllerSize, CountsTheVisibleCategoriesAtEveryCall) {
    start();
    expectOk("create");
    for (const int count : {0, 1, 5, 6, 40}) {
        files.writeShownCategories(count);
        expectHeight(count * 50 + 20);
    }
    files.writeCategories({{"Ringtone", "Ringtone", Row::Hidden}, {"A", "A", Row::Hidden}});
    expectHeight(20);
    files.writeCategories(
        {{"Ringtone", "Ringtone", Row::Shown}, {"A", "A", Row::Hidden}, {"B", "B", Row::Shown}});
    expectHeight(120);
}

TEST_F(WidgetControllerSize, IsReadAnewForTheHandShake) {
    files.writeShownCategories(2);
    start({"--parent-width", "767.5"});
    expectOk("create");
    expectOk("call view");
    files.writeShownCategories(3);
    EXPECT_EQ(expectOk("call hostWillPresent"),
              (Happened{"host widget:didUpdatePreferredSize: 767.5 x 170",
                        "log TW: self.preferredViewSize: {767.5, 170}",
                        "host invalidatePreferredViewSize", visible}));
}

TEST_F(WidgetControllerSize, NeedsNoParent) {
    start();
    expectOk("create");
    expectOk("call view");
    EXPECT_EQ(expectOk("call hostWillPresent"),
              (Happened{"host widget:didUpdatePreferredSize: 0 x 270",
                        "log TW: self.preferredViewSize: {0, 270}",
                        "host invalidatePreferredViewSize", visible}));
    EXPECT_EQ(viewWithTag(2000).at("frame").at(0), 20);
}

}  // namespace
}  // namespace test
