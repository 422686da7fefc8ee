#include "tests/support/HeadlessFixture.hpp"

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
        EXPECT_EQ(misused.readLine(), std::nullopt) << arguments.front();
        EXPECT_NE(misused.standardError(), "") << arguments.front();
    }
}

TEST_F(Options, ThatCannotBeReadAreRepeatedWithoutWhatActsOnATerminal) {
    HeadlessProcess misused({"--\x1b[31m\u202E\xff"});
    EXPECT_EQ(misused.finish(), 2);
    EXPECT_EQ(misused.standardError(),
              "tarnwick-headless: unknown argument '--\uFFFD[31m\uFFFD\uFFFD'\n");
}

TEST_F(Options, HelpNamesEveryOption) {
    HeadlessProcess helping({"--help"});
    EXPECT_EQ(helping.finish(), 0);
    std::string text;
    while (const auto line = helping.readLine())
        text += *line + "\n";
    for (const char* name : {"--preferences DIR", "--model NAME", "--bundle DIR",
                             "--parent-width W", "--clock manual|real", "--server simulated|pulse",
                             "--server-address ADDRESS", "--help", "--version"})
        EXPECT_NE(text.find(name), std::string::npos) << name;
}

TEST_F(Options, VersionIsOneLine) {
    HeadlessProcess versed({"--version"});
    EXPECT_EQ(versed.finish(), 0);
    EXPECT_TRUE(versed.readLine().value_or("").starts_with("tarnwick-headless 0."));
    EXPECT_EQ(versed.readLine(), std::nullopt);
}

TEST_F(Options, ABundleThatIsNoneFailsToCreateAndTheHostGoesOn) {
    start({"--bundle", files.folder().string()});
    EXPECT_NE(send("create").error(), "");
    EXPECT_NE(send("create").error(), "");
    start({"--bundle", "/nowhere"});
    EXPECT_EQ(send("create").error(), "there is no bundle at /nowhere");
    EXPECT_TRUE(send("volume Ringtone 0.2").isOk());
    EXPECT_TRUE(send("tree").isOk());
}

TEST_F(Options, ModelAndParentWidthAreThoseOfTheFirstCreation) {
    start({"--model", "iPad4,1", "--parent-width", "1024"});
    expectOk("create");
    expectOk("call view");
    EXPECT_EQ(resultOf("call preferredViewSize").dump(), R"({"width":560,"height":270})");
}

TEST_F(Options, ThereIsNoParentUnlessAskedFor) {
    start();
    expectOk("create");
    EXPECT_EQ(resultOf("call preferredViewSize").dump(), R"({"width":0,"height":270})");
}

TEST_F(Options, PreferencesAreReadAndWrittenInTheFolderGiven) {
    start();
    expectOk("create");
    expectOk("call view");
    EXPECT_TRUE(std::filesystem::exists(files.categoryFile()));
}

}  // namespace
}  // namespace test
