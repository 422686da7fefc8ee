#include "tests/support/HeadlessFixture.hpp"

#include <chrono>

namespace test {
namespace {

class InputCommands : public HeadlessFixture {
 protected:
    void SetUp() override {
        start({"--parent-width", "320"});
        expectOk("create");
        expectOk("call view");
    }
    Json slider() { return viewWithTag(2000); }
    std::string caption() { return viewWithTag(1000).at("text"); }
};

// The first row's slider lies at 20, 30, 280 by 30 in the window, its thumb in the middle.

TEST_F(InputCommands, TouchHoldsTheSliderUnderIt) {
    EXPECT_FALSE(slider().at("highlighted").get<bool>());
    EXPECT_EQ(expectOk("touch began 160 45"), Happened{});
    EXPECT_TRUE(slider().at("highlighted").get<bool>());
    EXPECT_EQ(slider().at("value"), 50);
    expectOk("touch ended 160 45");
    EXPECT_FALSE(slider().at("highlighted").get<bool>());
}

TEST_F(InputCommands, ADragSetsTheVolumeThatItShows) {
    expectOk("touch began 160 45");
    const Reply moved = send("touch moved 200 45");
    ASSERT_EQ(moved.events.size(), 2U);
    const double volume = moved.events[0].at("volume");
    EXPECT_GT(volume, 0.55);
    EXPECT_LT(volume, 0.95);
    EXPECT_NEAR(slider().at("value").get<double>(), volume * 100, 1e-4);
    EXPECT_EQ(moved.events[0].at("event"), "set-volume");
    EXPECT_EQ(moved.events[0].at("category"), "Ringtone");
    EXPECT_EQ(moved.events[1].at("event"), "volume-notification");
    EXPECT_EQ(moved.events[1].at("volume"), volume);
    EXPECT_EQ(expectOk("touch ended 200 45"), Happened{});
    EXPECT_EQ(viewWithTag(2001).at("value"), 50);
}

TEST_F(InputCommands, ADragPastTheEndsReachesThem) {
    expectOk("touch began 160 45");
    EXPECT_EQ(expectOk("touch moved 5000 -300"), (Happened{"set Ringtone 1", "volume Ringtone 1"}));
    EXPECT_EQ(caption(), "Ringtone: 100%");
    EXPECT_EQ(expectOk("touch moved -1e300 45"), (Happened{"set Ringtone 0", "volume Ringtone 0"}));
    EXPECT_EQ(caption(), "Ringtone: 0%");
    expectOk("touch cancelled 0 0");
    EXPECT_FALSE(slider().at("highlighted").get<bool>());
}

TEST_F(InputCommands, ATouchBesideTheSlidersOrWithoutABeginningDoesNothing) {
    EXPECT_EQ(expectOk("touch began 160 12"), Happened{});
    EXPECT_EQ(expectOk("touch moved 200 45"), Happened{});
    EXPECT_EQ(expectOk("touch ended 200 45"), Happened{});
    EXPECT_EQ(expectOk("touch moved 200 45"), Happened{});
    EXPECT_EQ(expectOk("touch began 1e9 -1e9"), Happened{});
    EXPECT_EQ(slider().at("value"), 50);
}

TEST_F(InputCommands, AHeldSliderIsLeftAloneByAChangeFromElsewhere) {
    expectOk("touch began 160 45");
    EXPECT_EQ(expectOk("volume Ringtone 0.9"), Happened{"volume Ringtone 0.9"});
    EXPECT_EQ(slider().at("value"), 50);
    EXPECT_EQ(caption(), "Ringtone: 50%");
    expectOk("touch ended 160 45");
    expectOk("volume Ringtone 0.8");
    EXPECT_EQ(caption(), "Ringtone: 80%");
}

TEST_F(InputCommands, WhatWasAnnouncedOfAHeldSliderIsAnnouncedAgainWhenItIsLetGo) {
    expectOk("touch began 160 45");
    expectOk("volume Ringtone 0.9");
    EXPECT_EQ(expectOk("touch ended 160 45"), Happened{"volume Ringtone 0.9"});
    EXPECT_EQ(caption(), "Ringtone: 90%");
    EXPECT_EQ(slider().at("value"), 90);
}

TEST_F(InputCommands, ARowWithoutAVolumeIsUnknownAgainAfterEveryInput) {
    expectOk("readable Ringtone no");
    expectOk("call updateValues");
    EXPECT_FALSE(slider().at("enabled").get<bool>());
    EXPECT_TRUE(viewWithTag(2001).at("enabled").get<bool>());
    for (const char* input : {"scroll 160 45 7", "touch began 160 45", "touch moved 200 45",
                              "touch ended 200 45", "key tab", "key end"})
        expectOk(input);
    EXPECT_EQ(caption(), "Ringtone: unknown");
    EXPECT_EQ(slider().at("value"), 0);
    expectOk("readable Ringtone yes");
    expectOk("volume Ringtone 0.3");
    EXPECT_TRUE(slider().at("enabled").get<bool>());
    EXPECT_EQ(caption(), "Ringtone: 30%");
}

TEST_F(InputCommands, TheWheelMovesTheSliderUnderThePoint) {
    const Reply turned = send("scroll 160 45 1");
    EXPECT_TRUE(turned.result().get<bool>());
    ASSERT_EQ(turned.events.size(), 2U);
    EXPECT_GT(slider().at("value").get<double>(), 50);
    const double raised = slider().at("value");
    expectOk("scroll 160 45 -2");
    EXPECT_LT(slider().at("value").get<double>(), raised);
    EXPECT_FALSE(resultOf("scroll 160 12 1").get<bool>());
}

TEST_F(InputCommands, KeysMoveTheFocusedSlider) {
    EXPECT_FALSE(resultOf("key right").get<bool>());
    EXPECT_TRUE(resultOf("key tab").get<bool>());
    EXPECT_EQ(expectOk("key end"), (Happened{"set Ringtone 1", "volume Ringtone 1"}));
    EXPECT_EQ(expectOk("key home"), (Happened{"set Ringtone 0", "volume Ringtone 0"}));
    for (const char* key : {"right", "up", "pageup"})
        EXPECT_EQ(expectOk(std::string("key ") + key).size(), 2U) << key;
    for (const char* key : {"left", "down", "pagedown"})
        EXPECT_EQ(expectOk(std::string("key ") + key).size(), 2U) << key;
    EXPECT_EQ(caption(), "Ringtone: 0%");
    expectOk("key tab");
    EXPECT_EQ(expectOk("key home"), (Happened{"set Audio/Video 0", "volume Audio/Video 0"}));
    expectOk("key backtab");
    EXPECT_EQ(expectOk("key end"), (Happened{"set Ringtone 1", "volume Ringtone 1"}));
}

TEST_F(InputCommands, InputBeforeThereIsAViewDoesNothing) {
    start();
    EXPECT_EQ(expectOk("touch began 1 1"), Happened{});
    EXPECT_FALSE(resultOf("scroll 1 1 1").get<bool>());
    EXPECT_FALSE(resultOf("key left").get<bool>());
}

TEST_F(InputCommands, AdvanceTakesFromNothingToADay) {
    expectOk("advance 0");
    expectOk("advance 0.5");
    expectOk("advance 86400000");
    for (const char* command : {"advance -1", "advance 86400001"})
        EXPECT_EQ(send(command).error(), "the time must lie between 0 and 86400000 milliseconds");
}

TEST_F(InputCommands, AdvanceWaitsWithTheRealClock) {
    start({"--clock", "real", "--parent-width", "320"});
    expectOk("create");
    expectOk("call view");
    const auto before = std::chrono::steady_clock::now();
    expectOk("advance 40");
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(40));
    EXPECT_EQ(expectOk("volume Ringtone 0.25"), Happened{"volume Ringtone 0.25"});
    EXPECT_EQ(caption(), "Ringtone: 25%");
    EXPECT_EQ(program->finish(), 0);
}

}  // namespace
}  // namespace test
