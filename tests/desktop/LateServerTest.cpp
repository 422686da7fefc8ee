#include "tests/desktop/XServer.hpp"
#include "tests/rigs/PulseAudioServer.hpp"
#include "tests/rigs/Waiting.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace test {
namespace {

/// The program in a window of its own, and a sound server that comes when it likes.
class LateServerTest : public testing::Test {
 protected:
    void startProgram() {
        Environment environment = folder.environment();
        environment["DISPLAY"] = display.displayName();
        environment["GDK_BACKEND"] = "x11";
        environment["PULSE_SERVER"] = folder.address();
        environment["NO_AT_BRIDGE"] = "1";
        program = ChildProcess(
            {TARNWICK_PROGRAM, "--preferences", files.folder().string(), "--model", "iPad4,1"},
            {.environment = environment, .log = said});
    }

    bool says(const std::string& text) const {
        std::ifstream file(said);
        std::ostringstream all;
        all << file.rdbuf();
        return all.str().find(text) != std::string::npos;
    }
    /// Captions have more colours than a bare window.
    bool isPainted() {
        constexpr std::size_t fewColours = 8;
        return user.coloursIn(CGRectMake(0, 0, XServer::width, XServer::height)) > fewColours;
    }
    /// Of the filled parts of the tracks: none while the volumes are unknown.
    std::size_t redPixels() {
        constexpr std::uint32_t red = 0xff0000;
        return user.countOf(red, CGRectMake(0, 0, XServer::width, XServer::height));
    }

    MixerFiles files;
    rigs::ServerFolder folder;
    rigs::PulseAudioServer server{folder};
    XServer display;
    XUser user{display.displayName()};
    std::filesystem::path said = files.folder() / "said";
    ChildProcess program;
};

TEST_F(LateServerTest, FillsTheRowsOnceItAnswers) {
    startProgram();
    ASSERT_TRUE(rigs::waitUntil([&] { return isPainted(); }));
    ASSERT_TRUE(rigs::waitUntil([&] { return says("no sound server answers"); }));
    EXPECT_EQ(redPixels(), 0U);
    server.startAndWait();
    EXPECT_TRUE(rigs::waitUntil([&] { return says("the sound server answers now"); }));
    EXPECT_TRUE(rigs::waitUntil([&] { return redPixels() > 0; })) << "the window was shown before";
}

TEST_F(LateServerTest, DoesNotKeepItsWindowFromAUserWhoseServerHangs) {
    server.startAndWait();
    server.suspend();
    startProgram();
    EXPECT_TRUE(rigs::waitUntil([&] { return isPainted(); }));
    EXPECT_EQ(redPixels(), 0U);
    server.resume();
    EXPECT_TRUE(rigs::waitUntil([&] { return redPixels() > 0; }));
}

TEST_F(LateServerTest, EmptiesThemWhenItGoesAndFillsThemAgain) {
    server.startAndWait();
    startProgram();
    ASSERT_TRUE(rigs::waitUntil([&] { return redPixels() > 0; }));
    server.stop(SIGKILL);
    EXPECT_TRUE(rigs::waitUntil([&] { return redPixels() == 0; }));
    server.startAndWait();
    EXPECT_TRUE(rigs::waitUntil([&] { return redPixels() > 0; }));
    EXPECT_FALSE(program.hasEnded());
}

}  // namespace
}  // namespace test
