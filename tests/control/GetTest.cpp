#include "tests/control/ControlFixture.hpp"

namespace test {
namespace {

class ControlGet : public ControlFixture {
 protected:
    void SetUp() override { startServer(); }
};

TEST_F(ControlGet, PrintsTheVolumeAsTheMixerWordsIt) {
    for (const int percent : {0, 38, 100}) {
        setSinkVolume(percent);
        EXPECT_EQ(outputOf({"get", "Audio/Video"}), std::to_string(percent) + "%\n");
    }
}

TEST_F(ControlGet, OfAnAmplifiedOutputIsAllOfTheScale) {
    setSinkVolume(150);
    EXPECT_EQ(outputOf({"get", "Audio/Video"}), "100%\n");
}

TEST_F(ControlGet, OfAMutedOutputIsNothing) {
    setSinkVolume(40);
    server_->pactl({"set-sink-mute", "spk", "1"});
    EXPECT_EQ(outputOf({"get", "Audio/Video"}), "0%\n");
}

TEST_F(ControlGet, SaysWhatItConnectsToWhereTheSoundIsDebugged) {
    const Ended ended = runToEnd(commandLine({"get", "Audio/Video"}),
                                 {.environment = {{"TARNWICK_DEBUG", "sound"}}});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.complaints, "sound: connected to " + server_->address() + "\n");
    EXPECT_EQ(run({"get", "Audio/Video"}).complaints, "");
}

TEST_F(ControlGet, TakesACaptionToo) {
    setSinkVolume(40);
    EXPECT_EQ(outputOf({"get", "Music"}), "40%\n");
}

TEST_F(ControlGet, OfACaptionOfSeveralIsAMisuseThatNamesThem) {
    files_.writeCategories({{"Ringtone", "Sound"}, {"Audio/Video", "Sound"}});
    const Ended ended = run({"get", "Sound"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.complaints,
              "tarnwickctl: 'Sound' is the caption of several categories: Ringtone, Audio/Video\n");
}

TEST_F(ControlGet, IsOneObjectAsJson) {
    setSinkVolume(40);
    const Json report = jsonOf({"get", "Audio/Video", "--json"});
    EXPECT_EQ(report.at("category"), "Audio/Video");
    EXPECT_NEAR(report.at("volume").get<double>(), 0.4, volumeStep);
    EXPECT_EQ(report.at("readable"), true);
}

TEST_F(ControlGet, OfWhatIsNotThereFailsWithoutAVolume) {
    const Ended ended = run({"get", "HeadsetBT"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.output, "");
    EXPECT_NE(ended.complaints.find("'HeadsetBT'"), std::string::npos) << ended.complaints;

    const Ended asJson = run({"get", "HeadsetBT", "--json"});
    EXPECT_EQ(asJson.status, 1);
    EXPECT_EQ(Json::parse(asJson.output).at("readable"), false);
    EXPECT_EQ(Json::parse(asJson.output).at("volume"), nullptr);
}

TEST_F(ControlGet, OfAnUnknownNameSaysThatItIsNoCategory) {
    const Ended ended = run({"get", "Ringtoned\x1b[31m"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.complaints,
              "tarnwickctl: 'Ringtoned\uFFFD[31m' is not one of the mixer's categories, and the "
              "sound server does not know it\n");
}

}  // namespace
}  // namespace test
