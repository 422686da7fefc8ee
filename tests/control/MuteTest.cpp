#include "tests/control/ControlFixture.hpp"
#include "tests/rigs/PipeWireServer.hpp"

namespace test {
namespace {

class ControlMute : public ControlOnEachServer {
 protected:
    void SetUp() override {
        startServer();
        setSinkVolume(80);
    }
    void give(const Words& command) { EXPECT_EQ(outputOf(command), ""); }
    bool isMuted() const { return server_->pactl({"get-sink-mute", "spk"}) == "Mute: yes\n"; }
};

TEST_P(ControlMute, SilencesAndKeepsTheVolume) {
    give({"mute", "Music"});
    EXPECT_TRUE(isMuted());
    EXPECT_NEAR(sinkFraction(), 0.8, volumeStep);
    EXPECT_EQ(outputOf({"get", "Music"}), "0%\n");
    give({"mute", "Music"});
    EXPECT_TRUE(isMuted());
    give({"unmute", "Music"});
    EXPECT_FALSE(isMuted());
    EXPECT_EQ(outputOf({"get", "Music"}), "80%\n");
}

TEST_P(ControlMute, IsToggledBothWays) {
    give({"toggle", "Audio/Video"});
    EXPECT_TRUE(isMuted());
    give({"toggle", "Audio/Video"});
    EXPECT_FALSE(isMuted());
    EXPECT_NEAR(sinkFraction(), 0.8, volumeStep);
}

TEST_P(ControlMute, OfEventSoundsIsKeptByTheServer) {
    give({"set", "Bell", "30%"});
    give({"mute", "Bell"});
    EXPECT_EQ(outputOf({"get", "Bell"}), "0%\n");
    give({"set", "Bell", "+10%"});
    EXPECT_EQ(outputOf({"get", "Bell"}), "40%\n");
}

TEST_P(ControlMute, IsToldInJsonWithTheVolumeBehindIt) {
    Json report = jsonOf({"get", "Music", "--json"});
    EXPECT_EQ(report.at("muted"), false);
    EXPECT_EQ(report.at("level"), report.at("volume"));
    give({"mute", "Music"});
    report = jsonOf({"get", "Music", "--json"});
    EXPECT_EQ(report.at("muted"), true);
    EXPECT_EQ(report.at("volume"), 0);
    EXPECT_NEAR(report.at("level").get<double>(), 0.8, volumeStep);
    const Json list = jsonOf({"list", "--json"});
    EXPECT_EQ(list.at(1), report);
    EXPECT_EQ(list.at(2).at("category"), "HeadsetBT");
    EXPECT_EQ(list.at(2).at("muted"), nullptr);
    EXPECT_EQ(list.at(2).at("level"), nullptr);
}

TEST_P(ControlMute, IsWatchedInJsonAndAsWhatIsHeardInText) {
    RunningProgram json(commandLine({"watch", "--json"}));
    RunningProgram text(commandLine({"watch"}));
    for (int i = 0; i < 4; ++i) {
        json.nextLine();
        text.nextLine();
    }
    give({"mute", "Music"});
    EXPECT_EQ(Json::parse(json.nextLine().value_or("")).at("muted"), true);
    EXPECT_EQ(text.nextLine(), "Audio/Video\tMusic (Speaker)\t0%\tSpeaker\tyes");
    setSinkVolume(60);
    EXPECT_NEAR(Json::parse(json.nextLine().value_or("")).at("level").get<double>(), 0.6,
                volumeStep);
    give({"unmute", "Music"});
    EXPECT_NEAR(Json::parse(json.nextLine().value_or("")).at("volume").get<double>(), 0.6,
                volumeStep);
    EXPECT_EQ(text.nextLine(), "Audio/Video\tMusic (Speaker)\t60%\tSpeaker\tyes")
        << "nothing of what moved while it was muted";
}

TEST_P(ControlMute, OfWhatIsNotThereFails) {
    for (const char* verb : {"mute", "unmute", "toggle"}) {
        const Ended ended = run({verb, "HeadsetBT"});
        EXPECT_EQ(ended.status, 1);
        EXPECT_NE(ended.complaints.find("'HeadsetBT'"), std::string::npos) << ended.complaints;
        EXPECT_EQ(run({verb}).status, 2);
    }
}

class ControlRefused : public ControlFixture {
 protected:
    ControlRefused() : ControlFixture(rigs::ServerKind::PipeWire) {}
    /// As a client without rights.
    Ended runAsLooker(const Words& arguments) const {
        Words words = commandLine(arguments);
        words.push_back("--server=" +
                        static_cast<rigs::PipeWireServer&>(*server_).lookersAddress());
        return runToEnd(words);
    }
};

TEST_F(ControlRefused, SaysTheServersReasonAndFails) {
    startServer();
    setSinkVolume(80);
    EXPECT_EQ(runAsLooker({"get", "Music"}).output, "80%\n");
    const Words commands[] = {{"set", "Music", "20%"}, {"set", "Music", "+5%"}, {"mute", "Music"}};
    for (const Words& command : commands) {
        const Ended ended = runAsLooker(command);
        EXPECT_EQ(ended.status, 1) << command[0];
        EXPECT_EQ(ended.complaints, "tarnwickctl: 'Audio/Video' cannot be set: Access denied\n");
    }
    EXPECT_EQ(server_->pactl({"get-sink-mute", "spk"}), "Mute: no\n");
    EXPECT_NEAR(sinkFraction(), 0.8, volumeStep);
    const Ended ringing = runAsLooker({"set", "Bell", "20%"});
    EXPECT_EQ(ringing.status, 1);
    EXPECT_EQ(ringing.complaints,
              "tarnwickctl: 'Ringtone' cannot be set: the server has not kept it\n");
}

INSTANTIATE_TEST_SUITE_P(On, ControlMute, eachServer, testing::PrintToStringParamName());

}  // namespace
}  // namespace test
