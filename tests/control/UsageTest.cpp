#include "tests/control/ControlFixture.hpp"
#include "tests/rigs/Waiting.hpp"

#include <chrono>
#include <csignal>
#include <functional>

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
          "--timeout SECONDS", "--wait SECONDS", "--changes-only", "--preferences DIR",
          "--model NAME", "--help", "--version"})
        EXPECT_TRUE(contains(help, word)) << word;
    EXPECT_FALSE(contains(help, "--bundle"));
}

TEST_F(ControlUsage, VersionIsTheProjects) {
    EXPECT_EQ(outputOf({"--version"}), "tarnwickctl " TARNWICK_VERSION "\n");
}

TEST_F(ControlUsage, MisuseEndsWithTwoAndAReasonAndNothingElse) {
    const std::vector<Words> misuses = {
        {}, {"--json="}, {"set", "Ringtone", "40", "--timeout", "3600"}};
    for (const Words& arguments : misuses) {
        const Ended ended = run(arguments);
        EXPECT_EQ(ended.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(ended.output, "") << testing::PrintToString(arguments);
        EXPECT_TRUE(contains(ended.complaints, "Try 'tarnwickctl --help'")) << ended.complaints;
    }
}

TEST_F(ControlUsage, MisuseIsRepeatedWithoutWhatActsOnATerminal) {
    const Ended command = run({"dance\x1b[31m\u202E"});
    EXPECT_TRUE(contains(command.complaints, "'dance\uFFFD[31m\uFFFD'")) << command.complaints;
    const Ended server = run({"list", "--server", "unix:/nowhere\x1b]0;x\x07"});
    EXPECT_TRUE(contains(server.complaints, "/nowhere\uFFFD]0;x\uFFFD")) << server.complaints;
    EXPECT_FALSE(contains(server.complaints, "\x1b")) << server.complaints;
}

double secondsOf(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

class ControlWithoutAServer : public ControlFixture {
 protected:
    std::string socketPath() const {
        return server_->address().substr(std::string("unix:").size());
    }
};

TEST_F(ControlWithoutAServer, EveryCommandEndsWithOneAndSaysSo) {
    for (const Words& command : {Words{"list"}, Words{"get", "Ringtone"}, Words{"watch"},
                                 Words{"set", "Ringtone", "40%"}}) {
        const Ended ended = run(command);
        EXPECT_EQ(ended.status, 1) << command[0];
        EXPECT_EQ(ended.output, "") << command[0];
        EXPECT_EQ(ended.complaints, "tarnwickctl: no sound server answers at " +
                                        server_->address() + ": there is no " + socketPath() +
                                        "\n");
    }
}

TEST_F(ControlWithoutAServer, EndsAtOnceHoweverLongOneMayTakeToAnswer) {
    const double seconds = secondsOf([&] {
        EXPECT_EQ(run({"--timeout", "3600", "list"}).status, 1);
    });
    EXPECT_LT(seconds, 2) << "the time that the program needs on a busy machine";
}

TEST_F(ControlWithoutAServer, ASocketWithoutAListenerIsNoServer) {
    startServer();
    server_->stop(SIGKILL);  // It leaves its socket behind.
    const Ended ended = run({"--timeout", "3600", "list"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.complaints, "tarnwickctl: no sound server answers at " + server_->address() +
                                    ": Connection refused\n");
}

TEST_F(ControlWithoutAServer, IsWaitedForAsLongAsTold) {
    const double seconds = secondsOf([&] {
        const Ended ended = run({"--wait", "0.5", "--timeout", "0", "list"});
        EXPECT_EQ(ended.status, 1);
        EXPECT_TRUE(contains(ended.complaints, "there is no " + socketPath()));
    });
    EXPECT_GE(seconds, 0.5);
    EXPECT_LT(seconds, 5);
}

TEST_F(ControlWithoutAServer, AServerThatComesInTimeIsFound) {
    RunningProgram program(commandLine({"--wait", "20", "list"}));
    EXPECT_EQ(program.lineSoon(), std::nullopt);
    startServer();
    EXPECT_TRUE(program.nextLine());
    EXPECT_EQ(program.finish(), 0) << program.complaints();
}

TEST_F(ControlWithoutAServer, AServerThatAnswersLateIsWaitedFor) {
    startServer();
    server_->suspend();
    RunningProgram program(commandLine({"--timeout", "20", "list"}));
    rigs::runFor(2.5);  // Longer than one attempt to connect.
    server_->resume();
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
    EXPECT_EQ(runToEnd(words, {.environment = {{"PULSE_SERVER", server_->address()}}}).status, 0);
    const Ended elsewhere =
        runToEnd({TARNWICKCTL, "list"}, {.environment = {{"PULSE_SERVER", "unix:/nowhere"}}});
    EXPECT_EQ(elsewhere.status, 1);
    EXPECT_EQ(elsewhere.complaints, "tarnwickctl: no sound server answers: there is no /nowhere\n");
}

}  // namespace
}  // namespace test
