#include "tests/control/ControlFixture.hpp"

#include <csignal>

namespace test {
namespace {

class ControlCompletion : public ControlFixture {
 protected:
    void SetUp() override { startServer(); }
    /// What bash offers behind the program's name and the words for the server and the folder.
    std::string offered(const Words& typed) const {
        Words words = {"bash", "--norc", TARNWICK_COMPLETION_TEST, TARNWICK_COMPLETION};
        for (const std::string& word : commandLine(typed))
            words.push_back(word);
        const Ended ended = runToEnd(words);
        EXPECT_EQ(ended.complaints, "");
        return ended.output;
    }
};

TEST_F(ControlCompletion, OffersTheCommandsThenTheCategoriesThenVolumes) {
    EXPECT_EQ(offered({""}), "list\nget\nset\nmute\nunmute\ntoggle\nwatch\ncheck\noutputs\n");
    EXPECT_EQ(offered({"w"}), "watch\n");
    EXPECT_EQ(offered({"get", "Head"}), "HeadsetBT\nHeadphonesBT\n");
    EXPECT_EQ(offered({"set", "Ringtone", "+"}), "+5%\n");
    EXPECT_EQ(offered({"unmute", "Head"}), "HeadsetBT\nHeadphonesBT\n");
    EXPECT_EQ(offered({"toggle", "Ri"}), "Ringtone\n");
    EXPECT_EQ(offered({"get", "Ringtone", ""}), "");
    EXPECT_EQ(offered({"mute", "Ringtone", ""}), "");
    EXPECT_EQ(offered({"list", ""}), "");
}

TEST_F(ControlCompletion, OffersTheOptionsAnywhere) {
    EXPECT_EQ(offered({"--t"}), "--timeout\n");
    EXPECT_EQ(offered({"set", "Ringtone", "--j"}), "--json\n");
    EXPECT_EQ(offered({"--timeout", ""}), "");
}

TEST_F(ControlCompletion, QuotesWhatTheShellWouldTakeApart) {
    files_.writeCategories({{"app:Web Browser", "Web"}, {"odd$(echo no)", "Odd"}});
    EXPECT_EQ(offered({"get", "od"}), "odd\\$\\(echo\\ no\\)\n");
    // Bash sees three words in it.
    EXPECT_EQ(offered({"get", "app", ":", "We"}), "Web\\ Browser\n");
}

TEST_F(ControlCompletion, OffersNothingWithoutAServer) {
    server_->stop(SIGTERM);
    EXPECT_EQ(offered({"get", ""}), "");
}

TEST_F(ControlCompletion, IsAScriptThatZshReadsToo) {
    const Ended ended = runToEnd({"zsh", "-n", TARNWICK_ZSH_COMPLETION});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.complaints, "");
}

}  // namespace
}  // namespace test
