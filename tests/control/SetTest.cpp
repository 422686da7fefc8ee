#include "tests/control/ControlFixture.hpp"
#include "tests/rigs/OtherProgram.hpp"
#include "tests/rigs/WirePlumberFiles.hpp"

#include <glib.h>

#include <algorithm>

namespace test {
namespace {

class ControlSet : public ControlOnEachServer {
 protected:
    void SetUp() override {
        startServer();
        setSinkVolume(50);
    }
    /// Sets and answers what the server has right afterwards.
    double setTo(const std::string& volume) {
        EXPECT_EQ(outputOf({"set", "Audio/Video", volume}), "");
        return sinkFraction();
    }
};

TEST_P(ControlSet, IsThereWhenTheProgramHasEnded) {
    EXPECT_NEAR(setTo("40%"), 0.4, volumeStep);
    EXPECT_NEAR(setTo("0.376"), 0.376, volumeStep);
    EXPECT_NEAR(setTo("0%"), 0, volumeStep);
    EXPECT_NEAR(setTo("100%"), 1, volumeStep);
}

TEST_P(ControlSet, StepsFromWhereTheVolumeStands) {
    EXPECT_NEAR(setTo("+5%"), 0.55, volumeStep);
    EXPECT_NEAR(setTo("-5%"), 0.50, 2 * volumeStep);
    EXPECT_NEAR(setTo("-0.25"), 0.25, 2 * volumeStep);
}

TEST_P(ControlSet, StaysOnTheScale) {
    EXPECT_NEAR(setTo("140%"), 1, volumeStep);
    EXPECT_NEAR(setTo("+5%"), 1, volumeStep);
    EXPECT_NEAR(setTo("-300%"), 0, volumeStep);
    EXPECT_NEAR(setTo("-5%"), 0, volumeStep);
}

TEST_P(ControlSet, AStepUpFromAnAmplifiedVolumeLeavesIt) {
    setSinkVolume(150);
    EXPECT_NEAR(setTo("+5%"), 1.5, volumeStep);
    EXPECT_NEAR(setTo("-5%"), 0.95, volumeStep);
}

TEST_P(ControlSet, UnmutesAndStepsFromTheVolumeBehindTheMute) {
    const auto isMuted = [this] { return server_->pactl({"get-sink-mute", "spk"}); };
    const std::pair<const char*, double> steps[] = {
        {"+5%", 0.85}, {"-5%", 0.75}, {"+30%", 1}, {"10%", 0.1}};
    for (const auto& [volume, wanted] : steps) {
        setSinkVolume(80);
        server_->pactl({"set-sink-mute", "spk", "1"});
        EXPECT_NEAR(setTo(volume), wanted, volumeStep);
        EXPECT_EQ(isMuted(), "Mute: no\n") << volume;
    }
    server_->pactl({"set-sink-mute", "spk", "1"});
    EXPECT_NEAR(setTo("-0%"), 0.1, volumeStep);
    EXPECT_EQ(isMuted(), "Mute: no\n");
}

TEST_P(ControlSet, ReachesTheEntryOfEventSounds) {
    EXPECT_EQ(outputOf({"set", "Bell", "30%"}), "");
    EXPECT_EQ(outputOf({"get", "Ringtone"}), "30%\n");
}

// PipeWire forgets a remembered volume whose connection ends right behind it.
TEST_P(ControlSet, EventSoundsKeepWhatEachRunHasSet) {
    for (int percent = 1; percent <= 40; ++percent) {
        const std::string volume = std::to_string(percent * 2) + "%";
        ASSERT_EQ(outputOf({"set", "Ringtone", volume}), "");
        ASSERT_EQ(outputOf({"get", "Ringtone"}), volume + "\n");
    }
}

// Newer session managers go on keeping the volume of a role, and give its streams another.
TEST_P(ControlSet, TellsWhenTheNextSoundOfARoleWillNotGetIt) {
    const bool isLost = GetParam() == rigs::ServerKind::PipeWire && !rigs::isWirePlumberScripted();
    const Ended ended = run({"set", "PhoneCall", "30%"});
    EXPECT_EQ(ended.status, isLost ? 3 : 0) << ended.complaints;
    EXPECT_EQ(ended.complaints.empty(), !isLost);
    EXPECT_EQ(outputOf({"get", "PhoneCall"}), "30%\n");
    const rigs::OtherProgram mixer(server_->address(), {.name = "Tarnwick"});
    outputOf({"set", "PhoneCall", "40%"});
}

TEST_P(ControlSet, OfARoleThatPlaysLasts) {
    rigs::OtherProgram dialer(server_->address());
    const auto call = dialer.play({.role = "phone"});
    outputOf({"set", "PhoneCall", "30%"});
}

// The wait for what the server keeps of a role was a tenth of a second, whatever the server said.
// The program's own start takes as long on a busy machine, but not each time, and reading a volume
// takes it too.
TEST_P(ControlSet, OfEventSoundsEndsOnceTheServerShowsIt) {
    const auto secondsOf = [&](const Words& arguments) {
        const gint64 start = g_get_monotonic_time();
        outputOf(arguments);
        return static_cast<double>(g_get_monotonic_time() - start) / G_USEC_PER_SEC;
    };
    double shortestGet = 1;
    double shortestSet = 1;
    for (int percent = 10; percent <= 100; percent += 10) {
        shortestGet = std::min(shortestGet, secondsOf({"get", "Ringtone"}));
        shortestSet =
            std::min(shortestSet, secondsOf({"set", "Ringtone", std::to_string(percent) + "%"}));
    }
    EXPECT_LT(shortestSet, shortestGet + 0.09);
}

TEST_P(ControlSet, ManyInARowAreAllThere) {
    for (int percent = 1; percent <= 20; ++percent)
        ASSERT_NEAR(setTo(std::to_string(percent) + "%"), percent / 100.0, volumeStep);
}

TEST_P(ControlSet, OfWhatIsNotThereFails) {
    const Ended ended = run({"set", "HeadsetBT", "40%"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_NE(ended.complaints.find("'HeadsetBT'"), std::string::npos) << ended.complaints;
    EXPECT_NEAR(sinkFraction(), 0.5, volumeStep);
}

INSTANTIATE_TEST_SUITE_P(On, ControlSet, eachServer, testing::PrintToStringParamName());

}  // namespace
}  // namespace test
