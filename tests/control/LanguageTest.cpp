#include "tests/control/ControlFixture.hpp"
#include "tests/locale/CommaLocale.hpp"

namespace test {
namespace {

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// The program as a German user runs it.
class ControlInGerman : public ControlFixture {
 protected:
    void SetUp() override {
        if (!CommaLocale().isActive()) GTEST_SKIP() << "no German locale on this system";
    }
    Words germanCommandLine(const Words& arguments) const {
        Words words = {"env", "LC_ALL=de_DE.UTF-8", "LOCPATH=" TARNWICK_TEST_LOCALES, "LANGUAGE="};
        for (const std::string& word : commandLine(arguments))
            words.push_back(word);
        return words;
    }
    Ended runInGerman(const Words& arguments) const {
        return runToEnd(germanCommandLine(arguments));
    }
};

TEST_F(ControlInGerman, ExplainsAndComplainsInGermanWithTheSameStatus) {
    EXPECT_TRUE(holds(runInGerman({"--help"}).output, "jede Kategorie: Beschriftung"));
    for (const Words& arguments : {Words{"dance"}, Words{"get", "Bell"}, Words{"--wait"}}) {
        const Ended german = runInGerman(arguments);
        const Ended english = run(arguments);
        EXPECT_EQ(german.status, english.status);
        EXPECT_EQ(german.output, english.output);
        EXPECT_NE(german.complaints, english.complaints);
    }
    EXPECT_TRUE(holds(runInGerman({"get", "Bell"}).complaints, "kein Klangserver antwortet"));
}

TEST_F(ControlInGerman, SaysWhatIsWrongWithTheFilesInGermanButNotAsJson) {
    files_.writeSettings(
        "<key>selectedSkin</key><string>Metall Gold</string>"
        "<key>textColour</key><integer>1</integer>");
    const Ended text = runInGerman({"check"});
    EXPECT_EQ(text.status, 1);
    EXPECT_TRUE(holds(text.output, "war „textColor“ gemeint?")) << text.output;
    const Ended json = runInGerman({"check", "--json"});
    EXPECT_EQ(json.output, run({"check", "--json"}).output);
    EXPECT_TRUE(holds(json.output, "did you mean 'textColor'?")) << json.output;
    EXPECT_EQ(json.status, 1);
}

TEST_F(ControlInGerman, WritesTheSameForScripts) {
    startServer();
    setSinkVolume(40);
    for (const Words& arguments :
         {Words{"list"}, Words{"list", "--json"}, Words{"get", "Music"},
          Words{"get", "Music", "--json"}, Words{"outputs", "status", "--json"}}) {
        const Ended german = runInGerman(arguments);
        const Ended english = run(arguments);
        EXPECT_EQ(german.output, english.output) << testing::PrintToString(arguments);
        EXPECT_EQ(german.status, english.status) << testing::PrintToString(arguments);
    }
    EXPECT_EQ(runInGerman({"set", "Music", "0.5"}).status, 0) << "a point, not a comma";
    EXPECT_NEAR(sinkFraction(), 0.5, volumeStep);
}

TEST_F(ControlInGerman, HeadsTheTableForPeopleInGerman) {
    startServer();
    RunningProgram program(germanCommandLine({"list"}),
                           {.output = RunningProgram::Output::Terminal});
    const std::string heading = program.nextLine().value_or("");
    EXPECT_TRUE(heading.starts_with("KATEGORIE     BESCHRIFTUNG     LAUTSTÄRKE  WEG")) << heading;
    EXPECT_EQ(program.nextLine().value_or("").substr(0, 8), "Ringtone");
}

}  // namespace
}  // namespace test
