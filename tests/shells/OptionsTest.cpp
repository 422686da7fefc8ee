#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/Options.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace shell {
namespace {

using Arguments = std::vector<const char*>;

class OptionsTest : public testing::Test {
 protected:
    std::optional<std::string> read(const Arguments& arguments) {
        return readOptions(options, arguments);
    }

    std::vector<std::string> taken;
    std::vector<Option> options = {
        {"--name", "NAME", "a name",
         [this](const std::string& value) -> std::optional<std::string> {
             if (value == "bad") return "it is bad";
             taken.push_back("name " + value);
             return std::nullopt;
         }},
        {"--flag", "", "a flag",
         [this](const std::string& value) -> std::optional<std::string> {
             taken.push_back("flag" + value);
             return std::nullopt;
         }},
    };
};

TEST_F(OptionsTest, TakeTheirValueFromTheNextWordOrAfterAnEqualsSign) {
    EXPECT_EQ(read({"--name", "a", "--flag", "--name=b=c", "--name="}), std::nullopt);
    EXPECT_EQ(taken, (std::vector<std::string>{"name a", "flag", "name b=c", "name "}));
}

TEST_F(OptionsTest, MayBeNone) {
    EXPECT_EQ(read({}), std::nullopt);
}

TEST_F(OptionsTest, TakeAValueThatLooksLikeAnOption) {
    EXPECT_EQ(read({"--name", "--flag"}), std::nullopt);
    EXPECT_EQ(taken, std::vector<std::string>{"name --flag"});
}

TEST_F(OptionsTest, SayWhatDoesNotFit) {
    EXPECT_EQ(read({"--nam", "a"}), "unknown argument '--nam'");
    EXPECT_EQ(read({"word"}), "unknown argument 'word'");
    EXPECT_EQ(read({""}), "unknown argument ''");
    EXPECT_EQ(read({"--name"}), "--name needs a value: NAME");
    EXPECT_EQ(read({"--flag=yes"}), "--flag takes no value");
    EXPECT_EQ(read({"--name", "bad"}), "--name: it is bad");
    EXPECT_TRUE(taken.empty());
}

TEST_F(OptionsTest, AreExplainedALineEach) {
    EXPECT_EQ(helpText("program [OPTION ...]", options),
              "Usage: program [OPTION ...]\n\n"
              "  --name NAME             a name\n"
              "  --flag                  a flag\n");
}

class CommonOptionsTest : public testing::Test {
 protected:
    ~CommonOptionsTest() override {
        setMachineModel("");
        setPreferencesDirectory("");
    }
    std::optional<std::string> read(const Arguments& arguments) {
        return readOptions(commonOptions(chosen), arguments);
    }
    CommonOptions chosen;
};

TEST_F(CommonOptionsTest, AreEmptyUntilChosen) {
    EXPECT_EQ(read({}), std::nullopt);
    EXPECT_EQ(chosen.preferences, std::nullopt);
    EXPECT_EQ(chosen.model, std::nullopt);
    EXPECT_TRUE(chosen.bundles.empty());
    EXPECT_FALSE(chosen.help);
    EXPECT_FALSE(chosen.version);
}

TEST_F(CommonOptionsTest, ReachThePlatform) {
    EXPECT_EQ(read({"--preferences", "/some/where", "--model", "iPad4,1", "--bundle", "b",
                    "--bundle", "c", "--help", "--version"}),
              std::nullopt);
    applyOptions(chosen);
    EXPECT_EQ(machineModel(), "iPad4,1");
    EXPECT_EQ(preferencesDirectory(), "/some/where/");
    EXPECT_EQ(chosen.bundles, (std::vector<std::string>{"b", "c"}));
    EXPECT_TRUE(chosen.help);
    EXPECT_TRUE(chosen.version);
}

TEST_F(CommonOptionsTest, RefuseAnEmptyValue) {
    for (const char* name : {"--preferences=", "--model=", "--bundle="})
        EXPECT_NE(read({name}), std::nullopt) << name;
}

}  // namespace
}  // namespace shell
