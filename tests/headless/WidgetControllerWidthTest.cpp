#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

struct WidthCase {
    std::string name;
    std::string model;
    std::string parent;
    std::string width;

    friend void PrintTo(const WidthCase& tested, std::ostream* out) { *out << tested.name; }
};

class WidgetControllerWidth : public HeadlessFixture,
                              public testing::WithParamInterface<WidthCase> {};

/// On 32-bit processors coordinates have single precision and are written with fewer digits.
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
                    // In single precision these are 768, and not exactly 0.1.
                    WidthCase{"PadAtTheThresholdInSinglePrecision", "iPad4,1", "767.99999999",
                              "560"},
                    WidthCase{"PhoneInSinglePrecision", "iPhone6,1", "0.1", "0.10000000149011612"}),
    [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace test
