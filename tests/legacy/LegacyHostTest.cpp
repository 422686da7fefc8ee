#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

/// The host that has no touches, only the places of taps.
class LegacyHost : public HeadlessFixture {
 protected:
    void SetUp() override {
        start({"--model", "iPhone4,1"});
        expectOk("create TarnwickViewController");
    }
    void show() {
        expectOk("call view");
        expectOk("call loadFullView");
    }
    /// A point on the slider of the category's row at that part of its width, as "X Y".
    std::string onSlider(int category, double part) {
        const Json row = resultOf("tree")
                             .at("subviews")
                             .at(0)
                             .at("subviews")
                             .at(static_cast<std::size_t>(category));
        const Json slider = viewWithTag(2000 + category);
        const auto coordinate = [&](const Json& view, std::size_t i) {
            return view.at("frame").at(i).get<double>();
        };
        const double x = coordinate(row, 0) + coordinate(slider, 0) + part * coordinate(slider, 2);
        const double y = coordinate(row, 1) + coordinate(slider, 1) + coordinate(slider, 3) / 2;
        return std::to_string(x) + " " + std::to_string(y);
    }
    std::vector<Json> touchesOf(const Reply& reply) {
        std::vector<Json> touches;
        for (const Json& event : reply.events)
            if (event.at("event") == "touch") touches.push_back(event);
        return touches;
    }
};

TEST_F(LegacyHost, TapsASliderToTheVolumeUnderTheFinger) {
    show();
    const Reply reply = send("call launchURLForTapLocation: " + onSlider(1, 0.8));
    EXPECT_TRUE(reply.line.at("result").is_null());
    const double value = viewWithTag(2001).at("value");
    EXPECT_GT(value, 70);
    EXPECT_LT(value, 95);
    const auto happened = reply.happened();
    const auto sets = std::count_if(happened.begin(), happened.end(), [](const std::string& what) {
        return what.starts_with("set Audio/Video ");
    });
    EXPECT_EQ(sets, 1) << "one press, one release, one volume";
    EXPECT_FALSE(viewWithTag(2001).at("highlighted").get<bool>());
}

TEST_F(LegacyHost, HasTheRowsReadAgain) {
    show();
    expectOk("readable Ringtone no");
    expectOk("call updateValues");
    EXPECT_EQ(viewWithTag(1000).at("text"), "Ringtone: unknown");
    expectOk("call unloadView");
    expectOk("call updateValues");
}

TEST_F(LegacyHost, ReachesTheEndsOfTheSlider) {
    show();
    expectOk("call launchURLForTapLocation: " + onSlider(0, 0.88));
    EXPECT_EQ(viewWithTag(2000).at("value"), 100);
    expectOk("call launchURLForTapLocation: " + onSlider(0, 0.12));
    EXPECT_EQ(viewWithTag(2000).at("value"), 0);
}

TEST_F(LegacyHost, SendsOneBeganAndOneEndedWithTheirRecords) {
    show();
    const auto touches = touchesOf(send("call launchURLForTapLocation: 160.5 35.25"));
    ASSERT_EQ(touches.size(), 2U);
    const Json began = {{"event", "touch"},
                        {"selector", "touchesBegan:withEvent:"},
                        {"class", "UISlider"},
                        {"tag", 2000},
                        {"x", 160.5},
                        {"y", 35.25},
                        {"tapCount", 1},
                        {"phase", 0},
                        {"touches", 1},
                        {"record",
                         {{"flags", "0x03010180"},
                          {"type", 3001},
                          {"sizeX", 1},
                          {"sizeY", 1},
                          {"x1", 160.5},
                          {"y1", 35.25},
                          {"x2", 160.5},
                          {"y2", 35.25},
                          {"x3", 160.5},
                          {"y3", 35.25}}}};
    Json ended = began;
    ended["selector"] = "touchesEnded:withEvent:";
    ended["phase"] = 3;
    ended["record"]["flags"] = "0x01010180";
    EXPECT_EQ(touches[0], began);
    EXPECT_EQ(touches[1], ended);
}

TEST_F(LegacyHost, HandsATapBesideTheSlidersToTheViewThere) {
    show();
    const Reply reply = send("call launchURLForTapLocation: 1 1");
    const auto touches = touchesOf(reply);
    ASSERT_EQ(touches.size(), 2U);
    EXPECT_NE(touches[0].at("class"), "UISlider");
    EXPECT_EQ(touches[0].at("class"), touches[1].at("class"));
    EXPECT_TRUE(reply.line.at("result").is_null());
    for (const std::string& what : reply.happened())
        EXPECT_FALSE(what.starts_with("set ")) << what;
}

TEST_F(LegacyHost, TapsNothingOutsideTheView) {
    show();
    for (const char* point : {"-1 35", "320 35", "160 250", "1e9 1e9", "-1e30 0"}) {
        const Reply reply = send(std::string("call launchURLForTapLocation: ") + point);
        EXPECT_TRUE(reply.isOk());
        EXPECT_TRUE(reply.line.at("result").is_null());
        EXPECT_TRUE(reply.events.empty()) << point;
    }
}

TEST_F(LegacyHost, TapsNothingBeforeTheViewIsInAWindow) {
    EXPECT_EQ(expectOk("call launchURLForTapLocation: 160 35"),
              Happened({"log TW: old loadView", visible}))
        << "the view is made, and nobody is touched";
    expectOk("call loadFullView");
    EXPECT_TRUE(send("call launchURLForTapLocation: 160 35").events.empty());
}

TEST_F(LegacyHost, TapsNothingAfterTheViewIsUnloaded) {
    show();
    expectOk("call unloadView");
    EXPECT_EQ(expectOk("call launchURLForTapLocation: 160 35"),
              Happened({"log TW: old loadView", visible}));
}

TEST_F(LegacyHost, TakesThePointInOneWordOrTwoAndNothingElse) {
    show();
    EXPECT_EQ(touchesOf(send("call launchURLForTapLocation: 160,35")).size(), 2U);
    EXPECT_EQ(touchesOf(send("call launchURLForTapLocation: 160 35")).size(), 2U);
    for (const char* arguments : {"", " 160", " 160 35 1", " 160 x", " yes", " nil"})
        EXPECT_EQ(send(std::string("call launchURLForTapLocation:") + arguments).error(),
                  "'launchURLForTapLocation:' does not take these arguments")
            << arguments;
}

TEST_F(LegacyHost, TapsAsOftenAsItLikes) {
    show();
    for (int i = 0; i < 200; ++i)
        expectOk("call launchURLForTapLocation: " + onSlider(0, i % 2 == 0 ? 0.88 : 0.12));
    EXPECT_EQ(viewWithTag(2000).at("value"), 0);
}

}  // namespace
}  // namespace test
