#include "shells/common/Installation.hpp"
#include "tests/desktop/UserSession.hpp"
#include "tests/processes/RunningProgram.hpp"
#include "tests/rigs/Waiting.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace test {
namespace {

/// A session whose bus knows the mixer's service file, with this build's program in it.
class ActivationTest : public testing::Test {
 protected:
    void SetUp() override {
        const std::filesystem::path services = session.folder.path() / "data/dbus-1/services";
        std::filesystem::create_directories(services);
        std::ifstream installed(TARNWICK_BUS_SERVICE);
        std::string text{std::istreambuf_iterator<char>(installed), {}};
        const std::size_t program = text.find("Exec=") + std::string("Exec=").size();
        text.replace(program, text.find(' ', program) - program, TARNWICK_PROGRAM);
        std::ofstream(services / (std::string(shell::applicationId) + ".service")) << text;
        call(
            {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.ReloadConfig"});
    }
    ~ActivationTest() override {
        if (isRunning()) action("quit");
    }

    struct Method {
        std::string service;
        std::string path;
        std::string name;
    };
    std::string call(const Method& method, const std::vector<std::string>& arguments = {}) const {
        std::vector<std::string> words = {"gdbus",     "call",         "--session",
                                          "--dest",    method.service, "--object-path",
                                          method.path, "--method",     method.name};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return outputOf(words, session.environment());
    }
    void application(const std::string& method, const std::vector<std::string>& arguments) const {
        call({shell::applicationId, "/org/tarnwick/mixer", "org.freedesktop.Application." + method},
             arguments);
    }
    void action(const std::string& name) const {
        application("ActivateAction", {name, "[]", "{}"});
    }
    bool isRunning() const {
        return call({"org.freedesktop.DBus", "/org/freedesktop/DBus",
                     "org.freedesktop.DBus.NameHasOwner"},
                    {shell::applicationId}) == "(true,)\n";
    }
    bool waitUntilItHasEnded() const {
        return rigs::waitUntil([this] { return !isRunning(); });
    }

    UserSession session;
};

TEST_F(ActivationTest, TheBusStartsTheMixerThatIsCalled) {
    ASSERT_FALSE(isRunning());
    application("Activate", {"{}"});
    EXPECT_EQ(session.waitForWindow().size.width, 560);
    application("Activate", {"{'desktop-startup-id': <'x'>}"});
    EXPECT_EQ(session.screen.windowsOf(shell::applicationId).size(), 1U);
}

TEST_F(ActivationTest, ToOpenSomethingShowsIt) {
    application("Open", {"['file:///nowhere']", "{}"});
    EXPECT_EQ(session.waitForWindow().size.width, 560);
}

TEST_F(ActivationTest, ActionsToggleAndQuitIt) {
    action("toggle");
    EXPECT_EQ(session.waitForWindow().size.width, 560);
    action("toggle");
    EXPECT_TRUE(session.waitForNoWindow());
    EXPECT_TRUE(waitUntilItHasEnded()) << "the bus starts it again when it is called";
    application("Activate", {"{}"});
    EXPECT_EQ(session.waitForWindow().size.width, 560);
    action("quit");
    EXPECT_TRUE(waitUntilItHasEnded());
}

TEST_F(ActivationTest, AnUnknownActionIsRefusedAndShowsNothing) {
    EXPECT_THROW(action("dance"), std::runtime_error);
    EXPECT_TRUE(session.screen.windowsOf(shell::applicationId).empty());
}

TEST_F(ActivationTest, AnOrdinaryStartFindsTheOneThatTheBusHasStarted) {
    application("Activate", {"{}"});
    EXPECT_EQ(session.waitForWindow().size.width, 560);
    EXPECT_EQ(session.runMixer({}), 0);
    EXPECT_TRUE(session.waitForNoWindow());
}

}  // namespace
}  // namespace test
