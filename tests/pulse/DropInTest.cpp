#include "backends/pulse/outputs/DropIn.hpp"
#include "backends/pulse/outputs/RoleSinks.hpp"
#include "tests/rigs/ServerFolder.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

using namespace pulse;

/// With a configuration folder of the test's own.
class DropInTest : public testing::Test {
 protected:
    static ServerMirror withSessionManager(const std::string& version) {
        ServerMirror mirror;
        mirror.clients[1] = {.name = "WirePlumber", .version = version};
        return mirror;
    }
    static std::size_t timesIn(const std::string& text, const std::string& part) {
        std::size_t times = 0;
        for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at)
            ++times;
        return times;
    }
    static std::string content() {
        std::ifstream file(dropInPath());
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static void makeFolder() { std::filesystem::create_directories(dropInPath().parent_path()); }

    rigs::ServerFolder folder;
    const ServerMirror older = withSessionManager("0.4.13");
    const ServerMirror newer = withSessionManager("0.5.8");
};

TEST_F(DropInTest, IsALoopbackForEachSinkThatTheMixerKnowsAsItsOwn) {
    const std::string text = dropInText(older);
    EXPECT_TRUE(text.starts_with("# Written by Tarnwick"));
    for (const RoleSink& sink : roleSinks) {
        EXPECT_EQ(timesIn(text, "node.name = \"" + sink.name() + "\"\n"), 1U);
        EXPECT_EQ(timesIn(text, "policy.role-based.priority = " + std::to_string(sink.priority)),
                  1U);
    }
    for (const char* common :
         {"name = libpipewire-module-loopback", "node.link-group = tarnwick-roles",
          "tarnwick.output = true", "media.class = Audio/Sink", "node.passive = true"})
        EXPECT_EQ(timesIn(text, common), roleSinks.size()) << common;
    EXPECT_EQ(timesIn(text, "{"), timesIn(text, "}"));
}

TEST_F(DropInTest, SpellsRolesAsTheSessionManagerReadsThem) {
    EXPECT_EQ(timesIn(dropInText(older), "intended-roles = \"alarm Alarm alert Alert\"\n"), 1U);
    EXPECT_EQ(timesIn(dropInText(newer), R"(intended-roles = [ "alarm" "Alarm" "alert" "Alert" ])"),
              1U);
}

TEST_F(DropInTest, ComesWithItsFoldersAndGoes) {
    EXPECT_FALSE(hasDropIn());
    EXPECT_EQ(removeDropIn(), std::nullopt);
    ASSERT_EQ(installDropIn(older), std::nullopt);
    EXPECT_TRUE(hasDropIn());
    EXPECT_EQ(content(), dropInText(older));
    ASSERT_EQ(installDropIn(newer), std::nullopt);
    EXPECT_EQ(content(), dropInText(newer));
    EXPECT_EQ(removeDropIn(), std::nullopt);
    EXPECT_FALSE(hasDropIn());
    EXPECT_TRUE(std::filesystem::is_empty(dropInPath().parent_path()));
}

TEST_F(DropInTest, OfAnotherAuthorStays) {
    makeFolder();
    for (const std::string& foreign : {std::string("context.modules = []\n"), std::string(),
                                       "\n" + dropInText(older), std::string("# Written by\n")}) {
        std::ofstream(dropInPath()) << foreign;
        EXPECT_FALSE(hasDropIn());
        EXPECT_NE(installDropIn(older), std::nullopt);
        EXPECT_EQ(removeDropIn(), std::nullopt);
        EXPECT_EQ(content(), foreign);
    }
}

TEST_F(DropInTest, ThatIsALinkStaysWhereverItPoints) {
    makeFolder();
    const std::filesystem::path target = folder.path() / "elsewhere.conf";
    std::filesystem::create_symlink(target, dropInPath());
    EXPECT_NE(installDropIn(older), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(target));
    std::ofstream(target) << dropInText(older);
    EXPECT_FALSE(hasDropIn());
    EXPECT_NE(installDropIn(newer), std::nullopt);
    EXPECT_EQ(removeDropIn(), std::nullopt);
    EXPECT_EQ(content(), dropInText(older));
    EXPECT_TRUE(std::filesystem::is_symlink(dropInPath()));
}

TEST_F(DropInTest, ThatIsAFolderStays) {
    std::filesystem::create_directories(dropInPath());
    EXPECT_NE(installDropIn(older), std::nullopt);
    EXPECT_EQ(removeDropIn(), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_directory(dropInPath()));
}

TEST_F(DropInTest, SaysWhyItCannotBeWritten) {
    folder.write("config/pipewire", "a file where the folder belongs");
    EXPECT_EQ(installDropIn(older),
              dropInPath().parent_path().string() + " cannot be made: Not a directory");
    EXPECT_FALSE(hasDropIn());
}
