#include "tests/processes/ChildProcess.hpp"
#include "tests/rigs/PulseAudioServer.hpp"
#include "tests/rigs/Waiting.hpp"
#include "tests/support/HeadlessFixture.hpp"

#include <algorithm>
#include <csignal>

namespace test {
namespace {

constexpr double volumeStep = 1.0 / 65536;
// Milliseconds; only what is broken takes so long.
const std::string soon = "20000";

class RealServer : public HeadlessFixture {
 protected:
    void SetUp() override {
        files.writeCategories({{"Ringtone", "Bell"}, {"Audio/Video", "Music"}});
    }
    void startProgram() {
        start({"--server", "pulse", "--server-address", server.address(), "--parent-width", "320"});
    }
    void startBoth() {
        server.startAndWait();
        setSinkVolume(50);
        startProgram();
        expectOk("ready " + soon);
        expectOk("create");
        expectOk("call view");
    }
    void setSinkVolume(int percent) const {
        server.pactl({"set-sink-volume", "spk", std::to_string(percent) + "%"});
    }
    double sinkFraction() const { return server.sinkVolumes("spk").at(0) / 65536.0; }
    bool waitFor(const std::string& event) { return send("wait " + soon + " " + event).isOk(); }
    std::string captionOf(int category) {
        return viewWithTag(1000 + category).at("text").get<std::string>();
    }

    rigs::ServerFolder folder;
    rigs::PulseAudioServer server{folder};
};

TEST_F(RealServer, FillsTheRows) {
    startBoth();
    EXPECT_EQ(captionOf(0), "Bell: 100%");
    EXPECT_EQ(captionOf(1), "Music (Speaker): 50%");
}

TEST_F(RealServer, IsMovedByATouch) {
    startBoth();
    expectOk("touch began 160 95");
    const Happened moved = expectOk("touch moved 5000 95");
    EXPECT_EQ(moved, Happened{"set Audio/Video 1"});
    EXPECT_TRUE(waitFor("volume-notification Audio/Video 1"));
    EXPECT_NEAR(sinkFraction(), 1, volumeStep);
}

TEST_F(RealServer, TakesTheCommandForAVolume) {
    startBoth();
    EXPECT_EQ(expectOk("volume Audio/Video 0.2"), Happened{}) << "the widget has set nothing";
    EXPECT_TRUE(waitFor("volume-notification Audio/Video 0.2"));
    EXPECT_NEAR(sinkFraction(), 0.2, volumeStep);
    EXPECT_EQ(captionOf(1), "Music (Speaker): 20%");
    EXPECT_EQ(send("volume HeadsetBT 0.2").error(), "'HeadsetBT' has no volume now");
}

TEST_F(RealServer, CannotBeToldWhatOnlyASimulatedDeviceCan) {
    startBoth();
    EXPECT_EQ(send("readable Ringtone no").error(), "only a simulated device can be told that");
    EXPECT_EQ(send("route Ringtone X").error(), "only a simulated device can be told that");
}

TEST_F(RealServer, HasTakenWhatWasSetWhenTheProgramHasEnded) {
    startBoth();
    for (const char* fraction : {"0.11", "0.22", "0.33"})
        program->write(std::string("volume Audio/Video ") + fraction + "\n");
    EXPECT_EQ(program->finish(), 0);
    EXPECT_NEAR(sinkFraction(), 0.33, volumeStep);
}

TEST_F(RealServer, IsNotReadyUntilItAnswers) {
    startProgram();
    EXPECT_EQ(send("ready 20").error(), "no sound server answers");
    expectOk("create");
    expectOk("call view");
    EXPECT_EQ(captionOf(1), "Music (Speaker): unknown");
    server.startAndWait();
    expectOk("ready " + soon);
    EXPECT_EQ(captionOf(1), "Music (Speaker): 100%");
}

TEST_F(RealServer, SleepsWhileNothingHappens) {
    startBoth();
    setSinkVolume(30);
    ASSERT_TRUE(waitFor("volume-notification Audio/Video 0.3"));
    rigs::runFor(1);  // What settles and what is confirmed has an end.
    const long sleeps = sleepsOf(program->id());
    const double processorSeconds = processorSecondsOf(program->id());
    rigs::runFor(3);
    EXPECT_EQ(sleepsOf(program->id()), sleeps);
    // A loop that never sleeps is not woken either.
    EXPECT_NEAR(processorSecondsOf(program->id()), processorSeconds, 0.001);
    setSinkVolume(40);
    EXPECT_TRUE(waitFor("volume-notification Audio/Video 0.4"));
}

TEST_F(RealServer, KeepsARowWhereItWasLeftWhileItsVolumeIsOnItsWay) {
    startBoth();
    expectOk("touch began 160 95");
    allHappened.clear();
    expectOk("touch moved 120 95");
    const std::string held = captionOf(1);
    expectOk("touch ended 120 95");
    EXPECT_EQ(captionOf(1), held);
    const bool isConfirmed = std::ranges::any_of(
        allHappened, [](const auto& each) { return each.starts_with("volume Audio/Video "); });
    EXPECT_TRUE(isConfirmed || waitFor("volume-notification Audio/Video"));
    EXPECT_EQ(captionOf(1), held);
}

TEST_F(RealServer, TellsThatItIsGoneAndBack) {
    startBoth();
    server.stop(SIGKILL);
    EXPECT_TRUE(waitFor("server false"));
    EXPECT_TRUE(waitFor("availability"));
    EXPECT_EQ(captionOf(0), "Bell: unknown");
    EXPECT_EQ(captionOf(1), "Music (Speaker): unknown");
    server.startAndWait();
    EXPECT_TRUE(waitFor("server true"));
    EXPECT_TRUE(waitFor("volume-notification Audio/Video 1"));
}

}  // namespace
}  // namespace test
