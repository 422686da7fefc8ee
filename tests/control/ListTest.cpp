#include "tests/control/ControlFixture.hpp"

namespace test {
namespace {

class ControlList : public ControlFixture {
 protected:
    void SetUp() override {
        startServer();
        setSinkVolume(40);
    }
};

TEST_F(ControlList, IsALineACategoryWithTabsForPrograms) {
    EXPECT_EQ(outputOf({"list"}),
              "Ringtone\tBell\t100%\tSpeaker\tyes\n"
              "Audio/Video\tMusic (Speaker)\t40%\tSpeaker\tyes\n"
              "HeadsetBT\tBT Headset\tunknown\tSpeaker\tno\n"
              "HeadphonesBT\tBT Headphones\tunknown\tSpeaker\tno\n");
}

TEST_F(ControlList, IsATableForATerminal) {
    RunningProgram program(commandLine({"list"}), {.output = RunningProgram::Output::Terminal});
    EXPECT_EQ(program.nextLine(), "CATEGORY      CAPTION          VOLUME   ROUTE    READABLE");
    EXPECT_EQ(program.nextLine(), "Ringtone      Bell             100%     Speaker  yes");
    EXPECT_EQ(program.nextLine(), "Audio/Video   Music (Speaker)  40%      Speaker  yes");
    EXPECT_EQ(program.nextLine(), "HeadsetBT     BT Headset       unknown  Speaker  no");
    EXPECT_EQ(program.nextLine(), "HeadphonesBT  BT Headphones    unknown  Speaker  no");
    EXPECT_EQ(program.nextLine(), std::nullopt);
    EXPECT_EQ(program.finish(), 0);
}

TEST_F(ControlList, IsOneArrayAsJson) {
    files_.writeCategories({{"Audio/Video", "Music"}, {"HeadsetBT", "BT Headset"}});
    const std::string output = outputOf({"--json", "list"});
    EXPECT_EQ(std::ranges::count(output, '\n'), 1);
    const Json list = Json::parse(output);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].at("category"), "Audio/Video");
    EXPECT_EQ(list[0].at("caption"), "Music (Speaker)");
    EXPECT_NEAR(list[0].at("volume").get<double>(), 0.4, volumeStep);
    EXPECT_EQ(list[0].at("route"), "Speaker");
    EXPECT_EQ(list[0].at("readable"), true);
    EXPECT_EQ(list[1].at("volume"), nullptr);
    EXPECT_EQ(list[1].at("readable"), false);
}

TEST_F(ControlList, FollowsTheCategoryFile) {
    files_.writeCategories({{"Ringtone", "Ringing", Row::Hidden}, {"Nobody", "Somebody"}});
    const Ended ended = run({"list"});
    const std::string& output = ended.output;
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(ended.complaints.ends_with("'Nobody'; its row stays unknown\n"))
        << ended.complaints;
    EXPECT_TRUE(
        output.starts_with("Ringtone\tRinging\t100%\tSpeaker\tyes\nNobody\tSomebody\t"
                           "unknown\t"))
        << output;
    EXPECT_TRUE(output.ends_with("\tno\n")) << output;
}

TEST_F(ControlList, OfAnEmptyFileIsEmpty) {
    files_.writeCategories({});
    EXPECT_EQ(outputOf({"list"}), "");
    EXPECT_EQ(outputOf({"list", "--json"}), "[]\n");
}

TEST_F(ControlList, WithoutAFileShowsTheFirstCategoriesAndWritesNothing) {
    std::filesystem::remove(files_.categoryFile());
    EXPECT_EQ(jsonOf({"--model", "iPhone6,1", "--json", "list"}).at(4).at("category"), "PhoneCall");
    EXPECT_EQ(jsonOf({"--model", "iPad4,1", "--json", "list"}).at(4).at("category"),
              "VideoConference");
    EXPECT_FALSE(std::filesystem::exists(files_.categoryFile()));
}

TEST_F(ControlList, KeepsATextOfAnyBytesInItsLine) {
    files_.writeCategories({{"Ringtone", "two\nlines\tand"}});
    EXPECT_EQ(outputOf({"list"}), "Ringtone\ttwo lines and\t100%\tSpeaker\tyes\n");
    EXPECT_EQ(jsonOf({"list", "--json"}).at(0).at("caption"), "two\nlines\tand");
}

TEST_F(ControlList, ShowsNothingThatActsOnATerminal) {
    const std::string evil = "a\u202Eb\u009B31mc\x7F\u2069";
    const std::string harmless = "a\uFFFDb\uFFFD31mc\uFFFD\uFFFD";
    files_.writeCategories({{evil, evil}});
    const Ended ended = run({"list"});
    EXPECT_EQ(ended.output, harmless + "\t" + harmless + "\tunknown\t-\tno\n");
    EXPECT_NE(ended.complaints.find("'" + harmless + "'"), std::string::npos) << ended.complaints;
    const std::string json = run({"list", "--json"}).output;
    EXPECT_NE(json.find(R"("a\u202eb\u009b31mc\u007f\u2069")"), std::string::npos) << json;
    EXPECT_EQ(Json::parse(json).at(0).at("caption"), evil) << "it says the same";
}

TEST_F(ControlList, FailsWhenItsOutputCannotBeWritten) {
    const Words shell = {"sh", "-c", R"("$0" "$@" >/dev/full)"};
    Words words = shell;
    for (const std::string& word : commandLine({"list"}))
        words.push_back(word);
    const Ended ended = runToEnd(words);
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.complaints, "tarnwickctl: standard output: No space left on device\n");
}

TEST_F(ControlList, FailsWhenItsOutputIsClosed) {
    Words words = {"sh", "-c", R"("$0" "$@" >&-)"};
    for (const std::string& word : commandLine({"list"}))
        words.push_back(word);
    const Ended ended = runToEnd(words);
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.complaints, "tarnwickctl: standard output is closed\n");
}

}  // namespace
}  // namespace test
