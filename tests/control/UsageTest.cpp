#include "tests/control/ControlFixture.hpp"

#include <algorithm>
#include <chrono>

namespace test {
namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class ControlUsage : public ControlFixture {};

TEST_F(ControlUsage, HelpNamesEveryCommandAndOption) {
    const std::string help = outputOf({"--help"});
    for (const char* word :
         {"list", "get CATEGORY", "set CATEGORY VOLUME", "watch", "--json", "--server ADDRESS",
          "--timeout SECONDS", "--preferences DIR", "--model NAME", "--help", "--version"})
        EXPECT_TRUE(contains(help, word)) << word;
    EXPECT_FALSE(contains(help, "--bundle"));
}

TEST_F(ControlUsage, VersionIsTheProjects) {
    EXPECT_EQ(outputOf({"--version"}), "tarnwickctl " TARNWICK_VERSION "\n");
}

TEST_F(ControlUsage, MisuseEndsWithTwoAndAReasonAndNothingElse) {
    const std::vector<Words> misuses = {
        {},          {"dance"},           {"--loud", "list"},      {"get"},
        {"set"},     {"set", "Ringtone"}, {"list", "too", "much"}, {"set", "Ringtone", "loud"},
        {"--json="}, {"--timeout", "x"},  {"watch", "Ringtone"},
    };
    for (const Words& arguments : misuses) {
        const Ended ended = run(arguments);
        EXPECT_EQ(ended.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(ended.output, "") << testing::PrintToString(arguments);
        EXPECT_TRUE(contains(ended.complaints, "Try 'tarnwickctl --help'")) << ended.complaints;
    }
}

TEST_F(ControlUsage, MisuseIsFoundWithoutAServer) {
    EXPECT_EQ(run({"set", "Ringtone", "40", "--timeout", "3600"}).status, 2);
}

class ControlWithoutAServer : public ControlFixture {};

TEST_F(ControlWithoutAServer, EveryCommandEndsWithOneAndSaysSo) {
    for (const Words& command : {Words{"list"}, Words{"get", "Ringtone"}, Words{"watch"},
                                 Words{"set", "Ringtone", "40%"}}) {
        Words arguments = {"--timeout", "0.05"};
        arguments.insert(arguments.end(), command.begin(), command.end());
        const Ended ended = run(arguments);
        EXPECT_EQ(ended.status, 1) << command[0];
        EXPECT_EQ(ended.output, "") << command[0];
        EXPECT_EQ(ended.complaints,
                  "tarnwickctl: no sound server answers at " + server_->address() + "\n");
    }
}

TEST_F(ControlWithoutAServer, IsNotWaitedForMuchLongerThanTold) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(run({"--timeout", "0.3", "list"}).status, 1);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(taken.count(), 0.3);
    EXPECT_LT(taken.count(), 5);
}

TEST_F(ControlWithoutAServer, AServerThatComesInTimeIsFound) {
    RunningProgram program(commandLine({"--timeout", "20", "list"}));
    startServer();
    EXPECT_TRUE(program.nextLine());
    EXPECT_EQ(program.finish(), 0) << program.complaints();
}

TEST_F(ControlWithoutAServer, AServerThatHangsIsNone) {
    startServer();
    server_->suspend();
    const Ended ended = run({"--timeout", "0.2", "list"});
    server_->resume();
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(contains(ended.complaints, "no sound server answers")) << ended.complaints;
}

TEST_F(ControlUsage, TheServerIsWhereTheEnvironmentSaysWithoutAnOption) {
    startServer();
    const Words words = {TARNWICKCTL, "--preferences", files_.folder().string(), "list"};
    EXPECT_EQ(runToEnd(words, {{"PULSE_SERVER", server_->address()}}).status, 0);
    const Ended elsewhere =
        runToEnd({TARNWICKCTL, "--timeout", "0.05", "list"}, {{"PULSE_SERVER", "unix:/nowhere"}});
    EXPECT_EQ(elsewhere.status, 1);
    EXPECT_EQ(elsewhere.complaints, "tarnwickctl: no sound server answers\n");
}

}  // namespace
}  // namespace test
