#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

class TimeCommands : public HeadlessFixture {
 protected:
    void SetUp() override {
        start({"--parent-width", "320"});
        expectOk("create");
        expectOk("call view");
    }
};

TEST_F(TimeCommands, WaitFindsWhatCameOfTheCommandBefore) {
    expectOk("volume Ringtone 0.25");
    const Reply reply = send("wait 1000 volume-notification Ringtone 0.25");
    EXPECT_EQ(reply.result().dump(),
              R"({"event":"volume-notification","category":"Ringtone","volume":0.25})");
    EXPECT_TRUE(reply.events.empty());
}

TEST_F(TimeCommands, WaitFindsAnEventOnce) {
    expectOk("volume Ringtone 0.25");
    EXPECT_TRUE(send("wait 1000 volume-notification").isOk());
    EXPECT_EQ(send("wait 1000 volume-notification").error(), "there was no such event");
}

TEST_F(TimeCommands, WaitForgetsWhatStandsBeforeTheEventAndKeepsWhatFollows) {
    expectOk("touch began 160 45");
    expectOk("touch moved 200 45");  // Sets, then announces.
    EXPECT_TRUE(send("wait 0 volume-notification Ringtone").isOk());
    EXPECT_FALSE(send("wait 0 set-volume Ringtone").isOk());
    expectOk("touch moved 5000 45");
    EXPECT_TRUE(send("wait 0 set-volume Ringtone 1").isOk());
    EXPECT_TRUE(send("wait 0 volume-notification Ringtone 1").isOk());
}

TEST_F(TimeCommands, WaitDoesNotFindWhatCameBeforeTheLastCommand) {
    expectOk("volume Ringtone 0.25");
    expectOk("tree");
    EXPECT_FALSE(send("wait 0 volume-notification").isOk());
}

TEST_F(TimeCommands, WaitTellsEventsApartByTheirEntries) {
    expectOk("volume Ringtone 0.25");
    for (const char* other :
         {"wait 0 volume-notification Audio/Video", "wait 0 volume-notification Ringtone 0.26",
          "wait 0 volume-notification - 0.26", "wait 0 volume-notification Ringtone 0.25 0.25",
          "wait 0 notification", "wait 0 -  Nobody"})
        EXPECT_EQ(send(other).error(), "there was no such event") << other;
    EXPECT_TRUE(send("wait 0 volume-notification - 0.25").isOk());
}

TEST_F(TimeCommands, WaitMovesTheManualClockToItsEnd) {
    start({"--parent-width", "320"});
    expectOk("create");
    expectOk("call view");
    EXPECT_FALSE(send("wait 86400000 log").isOk());
    expectOk("volume Ringtone 0.25");
    EXPECT_TRUE(send("wait 86400000 volume-notification").isOk()) << "and stops at what it finds";
}

TEST_F(TimeCommands, WaitKnowsTheEventsByTheReference) {
    expectOk("call hostDidDismiss");
    EXPECT_TRUE(send("wait 0 notification org.tarnwick.mixer.ishidden").isOk());
    expectOk("notify Nobody 0.5");
    EXPECT_TRUE(send("wait 0 volume-notification Nobody").isOk());
}

TEST_F(TimeCommands, WaitRefusesATimeOutOfRange) {
    for (const char* command : {"wait -1 log", "wait 86400001 log"})
        EXPECT_EQ(send(command).error(), "the time must lie between 0 and 86400000 milliseconds");
}

TEST_F(TimeCommands, TheSimulatedDeviceIsAlwaysReady) {
    EXPECT_TRUE(send("ready 0").isOk());
    EXPECT_EQ(send("ready -1").error(), "the time must lie between 0 and 86400000 milliseconds");
}

}  // namespace
}  // namespace test
