#include "tests/control/ControlFixture.hpp"

namespace test {
namespace {

/// Without a server: the files have nothing to do with it.
class ControlCheck : public ControlFixture {
 protected:
    std::string settings() const { return files_.settingsFile().string(); }
    std::string list() const { return files_.categoryFile().string(); }
    void damageBoth() const {
        files_.writeSettings("\n<key>selectedSkin</key><string>Glass</string>");
        MixerFiles::write(list(), "<plist>\n<array>\n<string>Tom & Jerry</string></array></plist>");
    }
    std::string complaintOfSettings() const {
        return settings() +
               ":2:1: there is no skin 'Glass'; the rows have no skin; those that there are: "
               "Default iOS, Cream, Cream Round, Metal\n";
    }
    std::string complaintOfList() const {
        return list() +
               ":3:13: a bare '&', which is written '&amp;'; the list that a new user begins with "
               "stands in its place\n";
    }
};

TEST_F(ControlCheck, OfFilesThatAreInOrderSaysNothing) {
    EXPECT_EQ(outputOf({"check"}), "");
    EXPECT_EQ(outputOf({"check", "--json"}), "[]\n");
    std::filesystem::remove(list());
    EXPECT_EQ(outputOf({"check"}), "") << "the mixer will write it";
    EXPECT_FALSE(std::filesystem::exists(list()));
}

TEST_F(ControlCheck, NamesEachProblemOfBothFilesAndEndsWithOne) {
    damageBoth();
    const Ended ended = run({"check"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.output, complaintOfList() + complaintOfSettings());
    EXPECT_EQ(ended.complaints, "");
}

TEST_F(ControlCheck, IsOneArrayAsJson) {
    damageBoth();
    const Ended ended = run({"--json", "check"});
    EXPECT_EQ(ended.status, 1);
    const Json problems = Json::parse(ended.output);
    ASSERT_EQ(problems.size(), 2U);
    EXPECT_EQ(problems[0].at("problem"), "a bare '&', which is written '&amp;'");
    EXPECT_EQ(problems[0].at("consequence"),
              "the list that a new user begins with stands in its place");
    EXPECT_EQ(problems[1].at("file"), settings());
    EXPECT_EQ(problems[1].at("line"), 2);
    EXPECT_EQ(problems[1].at("column"), 1);
    MixerFiles::write(list(), "<plist><dict/></plist>");
    EXPECT_EQ(Json::parse(run({"--json", "check"}).output)[0].at("line"), nullptr);
}

TEST_F(ControlCheck, ChangesNothing) {
    damageBoth();
    run({"check"});
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(files_.folder()), {}), 2);
}

TEST_F(ControlCheck, IsPartOfTheListOnStandardError) {
    startServer();
    damageBoth();
    const Ended ended = run({"list"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(ended.output.starts_with("Ringtone\t")) << ended.output;
    EXPECT_EQ(ended.complaints,
              "tarnwickctl: " + complaintOfList() + "tarnwickctl: " + complaintOfSettings());
}

}  // namespace
}  // namespace test
