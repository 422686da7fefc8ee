#include "tests/control/ControlFixture.hpp"

#include <csignal>

namespace test {
namespace {

class ControlWatch : public ControlOnEachServer {
 protected:
    void SetUp() override {
        startServer();
        setSinkVolume(50);
    }
    /// A watching program that has been seen to tell a change; the volume stands at 50 % again, and
    /// it has told that.
    std::unique_ptr<RunningProgram> watching(
        const Words& options = {}, RunningProgram::Output output = RunningProgram::Output::Pipe) {
        Words arguments = options;
        arguments.emplace_back("watch");
        auto program = std::make_unique<RunningProgram>(commandLine(arguments), output);
        // It says nothing of itself when it begins, so something is changed until it tells that.
        std::optional<std::string> line;
        for (int percent = 1; !isAboutMusic(line); percent = percent % 49 + 1) {
            setSinkVolume(percent);
            line = program->lineSoon();
        }
        setSinkVolume(50);
        while (!isHalf(line))
            line = program->nextLine();
        return program;
    }
    static bool isAboutMusic(const std::optional<std::string>& line) {
        return line && line->find("Music") != std::string::npos;
    }
    static bool isHalf(const std::optional<std::string>& line) {
        return line && (line->find("50%") != std::string::npos ||
                        line->find("\"volume\":0.5,") != std::string::npos);
    }
};

TEST_P(ControlWatch, PrintsALineForEachChange) {
    const auto program = watching();
    setSinkVolume(30);
    EXPECT_EQ(program->nextLine(), "Audio/Video\tMusic (Speaker)\t30%\tSpeaker\tyes");
    setSinkVolume(31);
    EXPECT_EQ(program->nextLine(), "Audio/Video\tMusic (Speaker)\t31%\tSpeaker\tyes");
}

TEST_P(ControlWatch, PrintsNothingForWhatStaysTheSame) {
    const auto program = watching();
    setSinkVolume(50);
    setSinkVolume(20);
    EXPECT_EQ(program->nextLine(), "Audio/Video\tMusic (Speaker)\t20%\tSpeaker\tyes");
}

TEST_P(ControlWatch, TellsAnotherOutputInALineToo) {
    const auto program = watching();
    server_->pactl({"set-sink-volume", "hp", "50%"});
    server_->pactl({"set-default-sink", "hp"});
    while (const auto line = program->nextLine())
        if (*line == "Audio/Video\tMusic (Headphones)\t50%\tHeadphones\tyes") break;
}

TEST_P(ControlWatch, IsAnObjectALineAsJson) {
    const auto program = watching({"--json"});
    setSinkVolume(30);
    const Json change = Json::parse(program->nextLine().value_or(""));
    EXPECT_EQ(change.at("category"), "Audio/Video");
    EXPECT_NEAR(change.at("volume").get<double>(), 0.3, volumeStep);
    EXPECT_EQ(change.at("readable"), true);
}

TEST_P(ControlWatch, HasAHeadingOnATerminal) {
    RunningProgram program(commandLine({"watch"}), RunningProgram::Output::Terminal);
    EXPECT_EQ(program.nextLine(), "CATEGORY      CAPTION          VOLUME   ROUTE    READABLE");
}

TEST_P(ControlWatch, TellsThatTheServerIsGoneAndThatItIsBack) {
    const auto program = watching();
    server_->stop(SIGKILL);
    EXPECT_EQ(program->nextLine(), "Ringtone\tBell\tunknown\tSpeaker\tno");
    EXPECT_EQ(program->nextLine(), "Audio/Video\tMusic (Speaker)\tunknown\tSpeaker\tno");
    server_->startAndWait();
    EXPECT_EQ(program->nextLine(), "Ringtone\tBell\t100%\tSpeaker\tyes");
    EXPECT_EQ(program->nextLine(), "Audio/Video\tMusic (Speaker)\t100%\tSpeaker\tyes");
}

TEST_P(ControlWatch, EndsCleanlyWhenItIsInterruptedOrTold) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const auto program = watching();
        program->signal(signal);
        EXPECT_EQ(program->nextLine(), std::nullopt);
        EXPECT_EQ(program->finish(), 0);
        EXPECT_EQ(program->complaints(), "");
    }
}

TEST_P(ControlWatch, EndsCleanlyWhenNobodyReadsAnyMoreWithoutAChange) {
    const auto program = watching();
    program->closeOutput();
    EXPECT_EQ(program->finish(), 0);
    EXPECT_EQ(program->complaints(), "");
}

TEST_P(ControlWatch, EndsWithItsTerminal) {
    const auto program = watching({}, RunningProgram::Output::Terminal);
    program->closeOutput();
    EXPECT_EQ(program->finish(), 0);
}

INSTANTIATE_TEST_SUITE_P(On, ControlWatch, eachServer, testing::PrintToStringParamName());

}  // namespace
}  // namespace test
