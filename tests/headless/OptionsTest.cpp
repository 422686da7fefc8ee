#include "tests/support/HeadlessFixture.hpp"

#include <chrono>

namespace test {
namespace {

class Options : public HeadlessFixture {};

TEST_F(Options, ThatCannotBeReadEndTheProgramWithTwoAndAReason) {
    const std::vector<std::vector<std::string>> misuses = {
        {"--unknown"},
        {"word"},
        {"--model"},
        {"--model", ""},
        {"--preferences="},
        {"--clock", "sundial"},
        {"--clock="},
        {"--parent-width", "wide"},
        {"--parent-width=-1"},
        {"--parent-width", "100001"},
        {"--parent-width=nan"},
        {"--server", "loud"},
        {"--server="},
        {"--server-address="},
        {"--server-address", "unix:/nowhere"},
        {"--server", "pulse", "--clock", "manual"},
        {"--help=yes"},
        {"-h=yes"},
        {"-H"},
        {""},
    };
    for (const auto& arguments : misuses) {
        HeadlessProcess misused(arguments);
        EXPECT_EQ(misused.finish(), 2) << arguments.front();
        EXPECT_EQ(misused.nextLine(), std::nullopt) << arguments.front();
        EXPECT_NE(misused.complaints(), "") << arguments.front();
    }
}

TEST_F(Options, ThatCannotBeReadAreRepeatedWithoutWhatActsOnATerminal) {
    HeadlessProcess misused({"--\x1b[31m\u202E\xff"});
    EXPECT_EQ(misused.finish(), 2);
    EXPECT_EQ(misused.complaints(),
              "tarnwick-headless: unknown argument '--\uFFFD[31m\uFFFD\uFFFD'\n");
}

TEST_F(Options, HelpNamesEveryOption) {
    HeadlessProcess helping({"--help"});
    EXPECT_EQ(helping.finish(), 0);
    std::string text;
    while (const auto line = helping.nextLine())
        text += *line + "\n";
    for (const char* name : {"--preferences DIR", "--model NAME", "--bundle DIR",
                             "--parent-width W", "--clock manual|real", "--server simulated|pulse",
                             "--server-address ADDRESS", "--help", "--version"})
        EXPECT_NE(text.find(name), std::string::npos) << name;
}

TEST_F(Options, VersionIsOneLine) {
    HeadlessProcess versed({"--version"});
    EXPECT_EQ(versed.finish(), 0);
    EXPECT_TRUE(versed.nextLine().value_or("").starts_with("tarnwick-headless 0."));
    EXPECT_EQ(versed.nextLine(), std::nullopt);
}

TEST_F(Options, ABundleThatIsNoneFailsToCreate) {
    start({"--bundle", files.folder().string()});
    EXPECT_NE(send("create").error(), "");
    EXPECT_NE(send("create").error(), "");
}

TEST_F(Options, TheRealClockLetsAdvanceWait) {
    start({"--clock", "real", "--parent-width", "320"});
    expectOk("create");
    expectOk("call view");
    const auto before = std::chrono::steady_clock::now();
    expectOk("advance 40");
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(40));
    EXPECT_EQ(expectOk("volume Ringtone 0.25"), Happened{"volume Ringtone 0.25"});
    EXPECT_EQ(viewWithTag(1000).at("text"), "Ringtone: 25%");
    EXPECT_EQ(program->finish(), 0);
}

}  // namespace
}  // namespace test
