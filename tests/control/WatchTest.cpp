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
    /// A watching program that has told what there is.
    std::unique_ptr<RunningProgram> watching(
        const Words& options = {}, RunningProgram::Output output = RunningProgram::Output::Pipe) {
        Words arguments = options;
        arguments.emplace_back("watch");
        auto program = std::make_unique<RunningProgram>(commandLine(arguments),
                                                        RunningProgram::Setting{.output = output});
        const int lines = output == RunningProgram::Output::Terminal ? 5 : 4;
        for (int i = 0; i < lines; ++i)
            beginning_.push_back(program->nextLine().value_or("nothing"));
        return program;
    }

    /// What the programs said so far of what there is.
    Words beginning_;
};

TEST_P(ControlWatch, BeginsWithTheList) {
    const std::string list = outputOf({"list"});
    const auto program = watching();
    std::string beginning;
    for (const std::string& line : beginning_)
        beginning += line + "\n";
    EXPECT_EQ(beginning, list);
    EXPECT_EQ(program->lineSoon(), std::nullopt);
}

TEST_P(ControlWatch, BeginsWithAnObjectForEachAsJson) {
    const Json list = jsonOf({"--json", "list"});
    watching({"--json"});
    ASSERT_EQ(list.size(), beginning_.size());
    for (std::size_t i = 0; i < list.size(); ++i)
        EXPECT_EQ(Json::parse(beginning_[i]), list[i]);
}

TEST_P(ControlWatch, PrintsOnlyChangesIfAsked) {
    RunningProgram program(commandLine({"watch", "--changes-only"}));
    EXPECT_EQ(program.lineSoon(), std::nullopt);
    // It says nothing of itself when it begins, so something is changed until it tells that.
    std::optional<std::string> line;
    for (int percent = 1; !line; percent = percent % 49 + 1) {
        setSinkVolume(percent);
        line = program.lineSoon();
    }
    EXPECT_TRUE(line->starts_with("Audio/Video\tMusic (Speaker)\t")) << *line;
}

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
    RunningProgram program(commandLine({"watch"}), {.output = RunningProgram::Output::Terminal});
    EXPECT_EQ(program.nextLine(), "CATEGORY      CAPTION          VOLUME   ROUTE    READABLE");
    EXPECT_EQ(program.nextLine(), "Ringtone      Bell             100%     Speaker  yes");
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

TEST_P(ControlWatch, EndsCleanlyWhenItsReaderGoesAwayWithoutAChange) {
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
