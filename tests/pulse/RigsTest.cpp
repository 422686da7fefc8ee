#include "tests/pulse/ServiceFixture.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

// The rigs themselves: that the servers are what the tests take them for.

using rigs::OtherProgram;

class Rigs : public OnBothServers {
 protected:
    Rigs() { server_->startAndWait(); }

    std::string serverInfo() { return server_->pactl({"info"}); }
    std::string sinkListing() { return server_->pactl({"list", "sinks"}); }
};
INSTANTIATE_TEST_SUITE_P(On, Rigs, bothServers, serverName);

TEST_P(Rigs, RunTheServerThatTheyName) {
    EXPECT_EQ(serverInfo().find("on PipeWire") != std::string::npos, isPipeWire());
    EXPECT_NE(serverInfo().find("Default Sink: spk\n"), std::string::npos);
}

TEST_P(Rigs, HaveTwoDevicesAtFullOfWhichOneIsHeadphones) {
    EXPECT_EQ(server_->sinkVolumes("spk"), (Channels{65536, 65536}));
    EXPECT_EQ(server_->sinkVolumes("hp"), (Channels{65536, 65536}));
    const std::string list = sinkListing();
    EXPECT_NE(list.find("device.form_factor = \"headphone\"", list.find("Name: hp")),
              std::string::npos);
    EXPECT_NE(list.find("Name: spk"), std::string::npos);
    EXPECT_EQ(list.find("auto_null"), std::string::npos);
}

TEST_P(Rigs, ComeBackAtTheSameAddressAfterEverySignal) {
    for (const int signal : {SIGTERM, SIGKILL}) {
        server_->stop(signal);
        EXPECT_FALSE(server_->isReady());
        server_->startAndWait();
        EXPECT_TRUE(server_->isReady());
    }
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

TEST_P(Rigs, PlayOnTheDeviceAndAsTheProgramThatIsAskedFor) {
    OtherProgram program(server_->address(), {.name = "Player", .processId = 4321});
    const auto tone = program.play({.role = "phone", .sink = "hp", .channels = 1});
    EXPECT_TRUE(waitForStream(*tone, {65536}));
    const std::string list = server_->pactl({"list", "sink-inputs"});
    EXPECT_NE(list.find("application.name = \"Player\""), std::string::npos);
    EXPECT_NE(list.find("application.process.id = \"4321\""), std::string::npos);
    EXPECT_NE(list.find("media.role = \"phone\""), std::string::npos);
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
