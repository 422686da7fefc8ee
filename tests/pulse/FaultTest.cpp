#include "platform/foundation/NSRunLoop.hpp"
#include "tests/pulse/ServiceFixture.hpp"
#include "tests/rigs/TurnWatch.hpp"

#include <csignal>
#include <filesystem>

// Servers that are absent, end, hang and come back.

using State = SoundServer::State;

class PulseFaults : public OnBothServers {
 protected:
    void startControllerWatched() {
        startController();
        controller_->setStateHandler([this](State state) { states_.push_back(state); });
        controller_->setAvailabilityHandler([this] { ++rereads_; });
    }
    void startBothWatched() {
        server_->startAndWait();
        startControllerWatched();
        ASSERT_TRUE(waitUntil([&] { return isReady() && posted_.size() >= 2; }));
        posted_.clear();
        states_.clear();  // The first attempts may have come before the server.
        rereads_ = 0;
    }
    /// Waits as waitUntil() does and answers the longest time for which the main thread was away.
    double longestTurnUntil(const std::function<bool()>& condition) {
        rigs::TurnWatch turns;
        EXPECT_TRUE(waitUntil([&] {
            turns.turn();
            return condition();
        }));
        return turns.longestSeconds();
    }

    std::vector<State> states_;
    int rereads_ = 0;
};
INSTANTIATE_TEST_SUITE_P(On, PulseFaults, bothServers, serverName);

// Turns of the loop take a fraction of a millisecond; what waits for a server takes seconds.
constexpr double blockedSeconds = 0.5;

TEST_P(PulseFaults, SaysThatNoServerAnswersAndFillsWhenOneComes) {
    startControllerWatched();
    EXPECT_EQ(controller_->state(), State::Connecting);
    ASSERT_TRUE(waitUntil([&] { return !states_.empty(); }));
    EXPECT_EQ(states_, std::vector<State>{State::Unavailable});
    EXPECT_EQ(volumeOf("Audio/Video"), unreadable);
    EXPECT_FALSE(controller_->setVolumeTo(0.5F, "Audio/Video"));
    EXPECT_EQ(controller_->routeForCategory("Audio/Video"), "Speaker");

    server_->start();
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
    EXPECT_TRUE(waitForVolume("Ringtone", 1));
    EXPECT_EQ(states_, (std::vector<State>{State::Unavailable, State::Ready}));
}

TEST_P(PulseFaults, SaysWhatBecomesOfTheConnectionWhereThatIsDebugged) {
    setenv("TARNWICK_DEBUG", "rows,sound", 1);
    testing::internal::CaptureStderr();
    startControllerWatched();
    ASSERT_TRUE(waitUntil([&] { return isUnavailable(); }));
    runFor(0.1);  // Several attempts.
    server_->start();
    ASSERT_TRUE(waitUntil([&] { return isReady(); }));
    server_->stop(SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return isUnavailable(); }));
    controller_.reset();
    unsetenv("TARNWICK_DEBUG");
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(
        said.starts_with("sound: cannot connect: there is no " + folder_.socket().string() + "\n"))
        << said;
    EXPECT_NE(
        said.find("\nsound: connected to " + server_->address() + "\nsound: lost the server: "),
        std::string::npos)
        << said;
    EXPECT_EQ(said.find("there is no"), said.rfind("there is no")) << "once, not at each attempt";
}

TEST_P(PulseFaults, SaysNothingOfTheConnectionWhereThatIsNotDebugged) {
    testing::internal::CaptureStderr();
    startBothWatched();
    server_->stop(SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return isUnavailable(); }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_P(PulseFaults, TellsTheFailureOfTheFirstAttemptOnceHoweverManyFollow) {
    startControllerWatched();
    ASSERT_TRUE(waitUntil([&] { return !states_.empty(); }));
    runFor(0.3);
    EXPECT_EQ(states_.size(), 1U);
    EXPECT_EQ(rereads_, 0);
    EXPECT_TRUE(posted_.empty());
}

TEST_P(PulseFaults, CannotReadAnythingFromTheEndOfAServerUntilTheNextOne) {
    startBothWatched();
    server_->pactl({"set-default-sink", "hp"});
    ASSERT_TRUE(
        waitUntil([&] { return controller_->routeForCategory("Ringtone") == "Headphones"; }));
    for (const int signal : {SIGTERM, SIGKILL}) {
        states_.clear();
        rereads_ = 0;
        server_->stop(signal);
        ASSERT_TRUE(waitUntil([&] { return isUnavailable() && rereads_ > 0; }));
        EXPECT_EQ(volumeOf("Audio/Video"), unreadable);
        EXPECT_EQ(volumeOf("Ringtone"), unreadable);
        EXPECT_TRUE(controller_->routeForCategory("Audio/Video").has_value());
        EXPECT_FALSE(controller_->setVolumeTo(0.5F, "Audio/Video"));

        posted_.clear();
        server_->start();
        EXPECT_TRUE(waitForVolume("Audio/Video", 1)) << "or a set was kept for the next server";
        EXPECT_TRUE(waitForVolume("Ringtone", 1));
        EXPECT_EQ(states_, (std::vector<State>{State::Unavailable, State::Ready}));
    }
}

TEST_P(PulseFaults, MovesAndFollowsTheServerThatCameBack) {
    startBothWatched();
    server_->stop(SIGKILL);
    server_->start();
    ASSERT_TRUE(waitUntil([&] { return states_.size() == 2; }));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Audio/Video"));
    ASSERT_TRUE(waitForVolume("Audio/Video", 0.25F));
    EXPECT_EQ(server_->sinkVolumes("spk"), (std::vector<unsigned>{16384, 16384}));
    server_->pactl({"set-sink-volume", "spk", "32768"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.5F));
}

TEST_P(PulseFaults, DropsTheSetsThatAServerDidNotLiveToTake) {
    startBothWatched();
    for (int i = 0; i < 100; ++i)
        controller_->setVolumeTo(0.5F, "Audio/Video");
    server_->stop(SIGKILL);
    server_->start();
    ASSERT_TRUE(waitUntil([&] { return states_.size() == 2; }));
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
    runFor(0.05);
    EXPECT_EQ(server_->sinkVolumes("spk"), (std::vector<unsigned>{65536, 65536}));
}

TEST_P(PulseFaults, NeverWaitsForAServerThatHangsAndGivesItUpInTime) {
    startBothWatched();
    server_->suspend();
    const double start = NSRunLoop::mainRunLoop().currentTime();
    for (int i = 0; i < 1000; ++i)
        controller_->setVolumeTo(0.25F, "Audio/Video");
    EXPECT_LT(longestTurnUntil([&] { return isUnavailable(); }), blockedSeconds);
    EXPECT_NEAR(NSRunLoop::mainRunLoop().currentTime() - start, 2.0, 0.5);
    EXPECT_EQ(volumeOf("Audio/Video"), unreadable);

    server_->resume();
    EXPECT_LT(longestTurnUntil([&] { return isReady(); }), blockedSeconds);
    // The one set that was in flight may have come through, and shows what it did.
    const float expected = static_cast<float>(server_->sinkVolumes("spk")[0]) / 65536;
    EXPECT_TRUE(waitForVolume("Audio/Video", expected));
}

TEST_P(PulseFaults, TakesNoHarmFromAShortHang) {
    startBothWatched();
    server_->suspend();
    controller_->setVolumeTo(0.5F, "Audio/Video");
    controller_->setVolumeTo(0.25F, "Audio/Video");
    runFor(0.5);
    server_->resume();
    ASSERT_TRUE(waitForVolume("Audio/Video", 0.25F));
    EXPECT_TRUE(waitUntil([&] {
        return server_->sinkVolumes("spk") == std::vector<unsigned>{16384, 16384};
    }));
    EXPECT_TRUE(states_.empty());
}

TEST_P(PulseFaults, GivesUpAnAttemptAtAServerThatHangs) {
    server_->start();
    ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(folder_.socket()); }));
    server_->suspend();
    startControllerWatched();
    EXPECT_LT(longestTurnUntil([&] { return isUnavailable(); }), blockedSeconds);
    server_->resume();
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
}

TEST_P(PulseFaults, IsUnavailableAtAddressesThatLeadNowhere) {
    for (const std::string& address :
         {std::string("unix:/nowhere/at/all"), std::string("nonsense:::"), std::string("unix:"),
          std::string("tcp:127.0.0.1:1"), std::string("{x}unix:/nowhere"), std::string(" "),
          std::string("tcp:127.0.0.1:99999999999"), std::string("tcp:"), std::string("tcp4:[::1]"),
          std::string("["), std::string("[]:"), std::string("{"), std::string("{}"),
          std::string(4096, 'x'), std::string(4097, 'x'), std::string(100000, 'x'),
          "unix:/" + std::string(5000, 'x')}) {
        controller_ = pulse::connectToServer(address);
        EXPECT_TRUE(waitUntil([&] { return isUnavailable(); })) << address.substr(0, 30);
        EXPECT_EQ(volumeOf("Audio/Video"), unreadable);
    }
}

TEST_P(PulseFaults, TakesAServerFromTheEnvironment) {
    setenv("PULSE_SERVER", server_->address().c_str(), 1);
    server_->start();
    controller_ = pulse::connectToServer();
    EXPECT_TRUE(waitForVolume("Audio/Video", 1));
    unsetenv("PULSE_SERVER");
}

TEST_P(PulseFaults, StartsNoServerOfItsOwn) {
    startControllerWatched();
    ASSERT_TRUE(waitUntil([&] { return !states_.empty(); }));
    runFor(0.1);
    EXPECT_EQ(folder_.programs(), 0);
}

class PipeWireFaults : public OnPipeWire {};

// There the default device is a word without a meaning, and what is set for roles is dropped.
TEST_F(PipeWireFaults, ReadsNothingWhereNoSessionManagerIs) {
    pipeWire().setSessionManager(rigs::PipeWireServer::SessionManager::None);
    pipeWire().setSinks({});
    // Without a priority, by which the server itself would take it for the default.
    pipeWire().addObject(
        "{ factory = adapter args = { factory.name = support.null-audio-sink node.name = plain"
        " media.class = Audio/Sink object.linger = true audio.position = [ FL FR ] } }");
    server_->start();
    startController();
    ASSERT_TRUE(waitUntil([&] { return isReady(); }));
    ASSERT_NE(server_->pactl({"info"}).find("@DEFAULT_SINK@"), std::string::npos);
    EXPECT_EQ(server_->sinkVolumes("plain"), (Channels{65536, 65536}));
    runFor(0.1);
    EXPECT_EQ(volumeOf("Audio/Video"), unreadable);
    EXPECT_EQ(volumeOf("Ringtone"), unreadable);
    EXPECT_FALSE(controller_->setVolumeTo(0.5F, "Ringtone"));
}
