#include "tests/control/ControlFixture.hpp"
#include "tests/rigs/OtherProgram.hpp"
#include "tests/rigs/PipeWireServer.hpp"
#include "tests/rigs/PulseAudioServer.hpp"
#include "tests/rigs/Waiting.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace test {
namespace {

class ControlOutputs : public ControlOnEachServer {
 protected:
    void SetUp() override {
        server_->beAsInASession();
        startServer();
    }
    bool isPipeWire() const { return server_->kind() == rigs::ServerKind::PipeWire; }
    std::filesystem::path dropIn() const {
        return folder_.path() / "config/pipewire/pipewire.conf.d/50-tarnwick-role-outputs.conf";
    }
    Json statusNow() const { return jsonOf({"outputs", "status", "--json"}); }
    static std::string roleSink(const std::string& role) {
        return "input.loopback.sink.role." + role;
    }
    bool playsOn(const rigs::PlayingStream& stream, const std::string& role) const {
        return rigs::waitUntil([&] {
            const std::string listing =
                std::to_string(stream.sinkIndex()) + "\t" + roleSink(role) + "\t";
            return ("\n" + server_->pactl({"list", "short", "sinks"})).find("\n" + listing) !=
                   std::string::npos;
        });
    }
    /// Not before the session manager has stored the default output, which takes it a second.
    void logInAnew() {
        EXPECT_TRUE(rigs::waitUntil([&] {
            std::ifstream file(folder_.path() / "state/wireplumber/default-nodes");
            const std::string stored{std::istreambuf_iterator<char>(file), {}};
            return stored.find("=" + roleSink("multimedia") + "\n") != std::string::npos;
        }));
        server_->stop();
        server_->start();
        const Words status = {"--wait", "20", "outputs", "status", "--json"};
        EXPECT_TRUE(rigs::waitUntil([&] { return jsonOf(status).at("state") == "apart"; }));
    }
    int modules() const {
        const std::string all = server_->pactl({"list", "short", "modules"});
        int count = 0;
        for (std::size_t at = 0; (at = all.find("remap-sink", at)) != std::string::npos; ++at)
            ++count;
        return count;
    }
};

TEST_P(ControlOutputs, AreSwitchedOnAndOffAndTellTheirState) {
    EXPECT_EQ(outputOf({"outputs", "status"}),
              "shared: everything goes to one output, and shares its volume\n");
    EXPECT_EQ(outputOf({"outputs", "on"}), "");
    EXPECT_EQ(outputOf({"outputs", "on"}), "") << "once more is no fault";
    EXPECT_EQ(modules(), 4);
    const std::string status = outputOf({"outputs", "status"});
    EXPECT_TRUE(status.starts_with("apart: ")) << status;
    EXPECT_NE(status.find("alarm: Alarm, 100%, plays on spk\n"), std::string::npos) << status;
    const Json json = jsonOf({"outputs", "status", "--json"});
    EXPECT_EQ(json.at("state"), "apart");
    EXPECT_EQ(json.at("outputs").size(), 4U);
    EXPECT_EQ(json.at("permanent"), false);
    EXPECT_EQ(outputOf({"set", "Music", "30%"}), "");
    EXPECT_EQ(outputOf({"get", "sink:@REAL@"}), "100%\n");
    EXPECT_EQ(outputOf({"set", "Music", "100%"}), "");
    EXPECT_EQ(outputOf({"outputs", "adopt"}), "");
    EXPECT_EQ(outputOf({"outputs", "off"}), "");
    EXPECT_EQ(modules(), 0);
    EXPECT_EQ(outputOf({"outputs", "off"}), "");
}

TEST_P(ControlOutputs, LeaveASessionsOwnOutputsAlone) {
    server_->pactl(
        {"load-module", "module-null-sink", "sink_name=input.loopback.sink.role.multimedia"});
    for (const char* action : {"on", "off"}) {
        const Ended ended = run({"outputs", action});
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.complaints,
                  "tarnwickctl: this session has outputs for roles of its own, which are left "
                  "alone: input.loopback.sink.role.multimedia\n");
        EXPECT_EQ(server_->pactl({"get-default-sink"}), "spk\n");
    }
    EXPECT_TRUE(outputOf({"outputs", "status"}).starts_with("foreign: "));
}

TEST_P(ControlOutputs, ArePermanentByAFileThatPipeWireReads) {
    const Ended on = run({"outputs", "on", "--permanent"});
    if (!isPipeWire()) {
        EXPECT_EQ(on.status, 1);
        EXPECT_NE(on.complaints.find("only PipeWire"), std::string::npos) << on.complaints;
        EXPECT_EQ(modules(), 0);
        return;
    }
    ASSERT_EQ(on.status, 0) << on.complaints;
    EXPECT_EQ(statusNow().at("permanent"), true);
    logInAnew();
    EXPECT_EQ(modules(), 0) << "the server makes them itself";
    EXPECT_EQ(statusNow().at("outputs").size(), 4U);
    EXPECT_NE(server_->pactl({"list", "sinks"}).find("tarnwick.output = \"true\""),
              std::string::npos);
    rigs::OtherProgram program(server_->address());
    const auto event = program.play({.role = "event"});
    const auto music = program.play({.role = "music"});
    EXPECT_TRUE(playsOn(*event, "notification"));
    EXPECT_TRUE(playsOn(*music, "multimedia"));
    EXPECT_EQ(outputOf({"set", "Bell", "50%"}), "");
    EXPECT_EQ(outputOf({"outputs", "off"}), "");
    EXPECT_FALSE(std::filesystem::exists(dropIn()));
    EXPECT_EQ(server_->pactl({"get-default-sink"}), "spk\n");
}

TEST_P(ControlOutputs, ThatPipeWireMadeLetEverythingThroughOnceOffAndAreGoneAtTheNextLogIn) {
    if (!isPipeWire()) return;
    outputOf({"outputs", "on", "--permanent"});
    logInAnew();
    outputOf({"set", "role:alarm", "40%"});
    EXPECT_EQ(outputOf({"outputs", "off"}), "");
    EXPECT_EQ(statusNow().at("state"), "shared");
    EXPECT_EQ(server_->sinkVolumes(roleSink("alarm")), (std::vector<unsigned>{65536, 65536}));
    EXPECT_EQ(outputOf({"outputs", "on"}), "") << "they are still there";
    EXPECT_EQ(statusNow().at("state"), "apart");
    EXPECT_EQ(outputOf({"outputs", "off"}), "");
    server_->stop();
    server_->startAndWait();
    EXPECT_EQ(statusNow().at("outputs").size(), 0U);
    EXPECT_EQ(statusNow().at("state"), "shared");
}

// The program leaves at once, and what the session manager has not done by then it does not do.
TEST_P(ControlOutputs, SwitchedOnOnceMoreGoWhereTheUserSentTheSoundMeanwhile) {
    outputOf({"outputs", "on"});
    rigs::OtherProgram program(server_->address());
    const auto event = program.play({.role = "event"});
    const auto music = program.play({.role = "music"});
    const auto other = program.play({});
    for (const std::string real : {"hp", "spk"}) {
        server_->pactl({"set-default-sink", real});
        rigs::runFor(0.3);
        outputOf({"outputs", "on"});
        rigs::runFor(0.3);
        EXPECT_EQ(server_->pactl({"get-default-sink"}), roleSink("multimedia") + "\n");
        const Json now = statusNow();
        for (const Json& output : now.at("outputs"))
            EXPECT_EQ(output.at("real"), real) << output.at("role");
    }
}

TEST_P(ControlOutputs, AdoptTheStreamsThatPlayPastThem) {
    const Ended early = run({"outputs", "adopt"});
    EXPECT_EQ(early.status, 1);
    EXPECT_NE(early.complaints.find("everything goes to one output"), std::string::npos);
    outputOf({"outputs", "on"});
    rigs::OtherProgram program(server_->address(), {.name = "Player"});
    const auto stream = program.play({.sink = "spk"});
    const Json strays = statusNow().at("strays");
    ASSERT_EQ(strays.size(), 1U);
    EXPECT_EQ(strays[0].at("program"), "Player");
    EXPECT_EQ(strays[0].at("role"), "multimedia");
    EXPECT_EQ(strays[0].at("sink"), "spk");
    EXPECT_NE(outputOf({"outputs", "status"})
                  .find("\npast its output: Player plays on spk instead of multimedia, as "),
              std::string::npos);
    EXPECT_EQ(outputOf({"outputs", "adopt"}), "1 stream moved\n");
    EXPECT_TRUE(playsOn(*stream, "multimedia"));
    EXPECT_EQ(statusNow().at("strays"), Json::array());
    EXPECT_EQ(outputOf({"outputs", "adopt"}), "");
}

TEST_P(ControlOutputs, LeaveAFileThatTheyDidNotWrite) {
    if (!isPipeWire()) return;
    folder_.write("config/pipewire/pipewire.conf.d/50-tarnwick-role-outputs.conf", "# Mine.\n");
    const Ended on = run({"outputs", "on", "--permanent"});
    EXPECT_EQ(on.status, 1);
    EXPECT_NE(on.complaints.find("left as it is"), std::string::npos) << on.complaints;
    EXPECT_EQ(outputOf({"outputs", "off"}), "");
    EXPECT_TRUE(std::filesystem::exists(dropIn()));
}

TEST_P(ControlOutputs, CannotBeStoredWhereNothingCanBeWritten) {
    folder_.write("state/tarnwick", "A file where a folder belongs.");
    const Ended on = run({"outputs", "on"});
    EXPECT_EQ(on.status, 1);
    EXPECT_NE(on.complaints.find("cannot be stored"), std::string::npos) << on.complaints;
    EXPECT_EQ(modules(), 0);
}

INSTANTIATE_TEST_SUITE_P(On, ControlOutputs, eachServer, testing::PrintToStringParamName());

}  // namespace
}  // namespace test
