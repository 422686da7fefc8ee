#include "tests/pulse/ServiceFixture.hpp"
#include "tests/rigs/TurnWatch.hpp"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

// The rigs themselves: that the servers are what the tests take them for.

using rigs::OtherProgram;

class Rigs : public OnBothServers {
 protected:
    Rigs() { server_->startAndWait(); }
};
INSTANTIATE_TEST_SUITE_P(On, Rigs, bothServers, serverName);

TEST_P(Rigs, RunTheServerThatTheyName) {
    const std::string info = server_->pactl({"info"});
    EXPECT_EQ(info.find("on PipeWire") != std::string::npos, isPipeWire());
    EXPECT_NE(info.find("Default Sink: spk\n"), std::string::npos);
}

TEST_P(Rigs, PlayWhatIsHeardInBothChannels) {
    OtherProgram program(server_->address());
    const auto ear = program.record("spk.monitor");
    const auto tone = program.play({.role = "music", .level = 0.5F});
    EXPECT_TRUE(waitForStream(*tone, {65536, 65536}));
    EXPECT_TRUE(waitUntil([&] { return ear->left() > 0.4F && ear->right() > 0.4F; }));
    server_->pactl({"set-sink-input-volume", tone->index(), "65536", "0"});
    EXPECT_TRUE(waitUntil([&] { return ear->left() > 0.4F && ear->right() == 0; }));
    EXPECT_TRUE(waitForStream(*tone, {65536, 0}));
}

TEST_P(Rigs, EndWithTheTestAlsoWhenItCrashes) {
    rigs::ServerFolder other;
    const pid_t crashing = fork();
    if (crashing == 0) {
        const auto server = rigs::makeServer(GetParam(), other);
        server->start();
        for (;;)
            pause();
    }
    const std::ptrdiff_t programs = isPipeWire() ? 3 : 1;
    EXPECT_TRUE(waitUntil([&] { return other.programs() == programs; }));
    kill(crashing, SIGKILL);
    waitpid(crashing, nullptr, 0);
    EXPECT_TRUE(waitUntil([&] { return other.programs() == 0; }));
}

namespace {

double threadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

TEST(TurnWatch, CountsWhatTheThreadRunsAndWhatItIsBlockedFor) {
    constexpr double turnSeconds = 0.02;
    const auto run = [] {
        const double end = threadSeconds() + turnSeconds;
        while (threadSeconds() < end) {
        }
    };
    const auto block = [] { poll(nullptr, 0, static_cast<int>(turnSeconds * 1000)); };
    for (const std::function<void()>& turn : {std::function<void()>(run), {block}}) {
        rigs::TurnWatch turns;
        turns.turn();
        turn();
        turns.turn();
        turns.turn();
        EXPECT_GE(turns.longestSeconds(), 0.95 * turnSeconds);
    }
}
