#include "tests/pulse/OutputsFixture.hpp"
#include "tests/rigs/FakeCard.hpp"
#include "tests/rigs/FakeHeadset.hpp"

#include <iterator>
#include <sstream>

// What the outputs for roles do when devices, servers and other programs change something.

using rigs::OtherProgram;
using rigs::RecordingStream;

class PulseOutputsFollowing : public OutputsFixture {};
INSTANTIATE_TEST_SUITE_P(On, PulseOutputsFollowing, bothServers, serverName);

TEST_P(PulseOutputsFollowing, GoWhereTheUserSendsTheSound) {
    server_->startAndWait();
    startFollower();
    ASSERT_TRUE(choose(Choice::Apart));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Audio/Video") && isSettled());
    for (const std::string real : {"hp", "spk"}) {
        server_->pactl({"set-default-sink", real});
        EXPECT_TRUE(waitForOutputs(real)) << real;
        EXPECT_EQ(defaultSink(), outputOf("multimedia"));
        EXPECT_TRUE(waitForRoute("Audio/Video", real == "hp" ? "Headphones" : "Speaker"));
        EXPECT_TRUE(waitForRoute("Ringtone", real == "hp" ? "Headphones" : "Speaker"));
    }
    EXPECT_EQ(volumeOf("Audio/Video"), 0.25F);
    EXPECT_EQ(modules(), 4);
}

TEST_P(PulseOutputsFollowing, ReturnWhenTheOutputBehindThemVanishes) {
    server_->setSinks({{"spk"}});
    server_->startAndWait();
    startFollower();
    ASSERT_TRUE(choose(Choice::Apart));
    const std::string module = server_->loadSink("dock");
    server_->pactl({"set-default-sink", "dock"});
    ASSERT_TRUE(waitForOutputs("dock"));
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Audio/Video") && isSettled());
    OtherProgram program(server_->address());
    const auto ear = program.record("spk.monitor");
    auto music = program.play({.role = "music", .level = 0.5F});
    runFor(0.3);
    ear->listen();
    server_->pactl({"unload-module", module});
    EXPECT_TRUE(waitForOutputs("spk"));
    runFor(0.3);
    const auto loud =
        std::ranges::count_if(ear->windows(), [](float level) { return level > 0.07F; });
    EXPECT_LE(static_cast<double>(loud) * RecordingStream::windowSeconds, 0.02);
    // Another stream: the server may leave one with a short buffer waiting after such a move.
    music.reset();
    music = program.play({.role = "music", .level = 0.5F});
    EXPECT_NEAR(heard(*ear), 0.0625F, 0.001F);
    EXPECT_EQ(volumeOf("Audio/Video"), 0.5F);
    EXPECT_EQ(modules(), 4);
}

TEST_P(PulseOutputsFollowing, ReturnWithTheServer) {
    server_->startAndWait();
    startFollower();
    ASSERT_TRUE(choose(Choice::Apart));
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Audio/Video"));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Ringtone") && isSettled());
    if (isPipeWire()) {
        static_cast<rigs::PipeWireServer&>(*server_).restartPulseServer();
    } else {
        server_->stop();
        server_->start();
    }
    ASSERT_TRUE(waitUntil([&] { return !isReady(); }));
    ASSERT_TRUE(waitUntil([&] { return isReady(); }));
    EXPECT_TRUE(waitForOutputs("spk"));
    EXPECT_EQ(defaultSink(), outputOf("multimedia"));
    EXPECT_TRUE(waitToRead("Audio/Video", 0.5F));
    EXPECT_TRUE(waitToRead("Ringtone", 0.25F));
    EXPECT_EQ(modules(), 4);
}

TEST_P(PulseOutputsFollowing, ComeAtLogInWhereTheUserChoseThem) {
    server_->startAndWait();
    startFollower();
    ASSERT_TRUE(choose(Choice::Apart));
    controller_.reset();
    posted_.clear();
    server_->stop();
    server_->startAndWait();
    startFollower();
    EXPECT_TRUE(waitForOutputs("spk"));
    ASSERT_TRUE(choose(Choice::Shared));
    controller_.reset();
    posted_.clear();
    startFollower();
    runFor(0.3);
    EXPECT_EQ(modules(), 0);
}

TEST_P(PulseOutputsFollowing, AreLoadedOnceByTwoMixers) {
    server_->startAndWait();
    startFollower();
    const auto other = pulse::connectToServer(server_->address());
    other->roleOutputs()->follow();
    ASSERT_TRUE(waitUntil([&] { return other->state() == SoundServer::State::Ready; }));
    ASSERT_TRUE(choose(Choice::Apart));
    server_->pactl({"set-default-sink", "hp"});
    EXPECT_TRUE(waitForOutputs("hp"));
    runFor(0.3);
    EXPECT_EQ(modules(), 4);
    other->roleOutputs()->choose(Choice::Shared);
    EXPECT_TRUE(waitUntil([&] { return !other->roleOutputs()->isBusy(); }));
    runFor(0.3);
    EXPECT_EQ(modules(), 0);
    EXPECT_EQ(defaultSink(), "hp");
}

TEST_P(PulseOutputsFollowing, LeaveASessionWithRoleOutputsOfItsOwnAlone) {
    server_->startAndWait();
    startFollower();
    server_->pactl({"load-module", "module-null-sink", "sink_name=" + outputOf("multimedia")});
    ASSERT_TRUE(waitUntil([&] { return outputs().state() == RoleOutputs::State::Foreign; }));
    const std::string before = arrangement();
    outputs().choose(Choice::Apart);
    runFor(0.3);
    EXPECT_FALSE(outputs().isBusy());
    EXPECT_EQ(outputs().state(), RoleOutputs::State::Foreign);
    EXPECT_EQ(arrangement(), before);
}

TEST_P(PulseOutputsFollowing, PlayOnWhenTheSessionManagerRestarts) {
    if (!isPipeWire()) return;
    server_->startAndWait();
    startFollower();
    ASSERT_TRUE(choose(Choice::Apart));
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Audio/Video") && isSettled());
    static_cast<rigs::PipeWireServer&>(*server_).restartSessionManager();
    runFor(0.5);
    EXPECT_TRUE(waitUntil([&] { return defaultSink() == outputOf("multimedia"); }));
    EXPECT_TRUE(waitToRead("Audio/Video", 0.5F));
    EXPECT_EQ(modules(), 4);
}

// As some mixers do with every stream when the default output changes.
TEST_P(PulseOutputsFollowing, StayApartWhenAnotherMixerMovesEverythingToTheDefault) {
    if (isPipeWire()) return;  // Its session manager never links one into another.
    server_->startAndWait();
    startFollower();
    ASSERT_TRUE(choose(Choice::Apart));
    std::istringstream lines(server_->pactl({"list", "short", "sink-inputs"}));
    std::vector<std::string> streams;
    for (std::string line; std::getline(lines, line);)
        streams.push_back(line.substr(0, line.find('\t')));
    streams.pop_back();  // Media's own, which the server does not move into itself.
    for (const std::string& stream : streams)
        server_->pactl({"move-sink-input", stream, outputOf("multimedia")});
    runFor(0.2);
    const std::string listing = server_->pactl({"list", "short", "sink-inputs"});
    const std::regex onTheRealOne("[0-9]+\t0\t");
    EXPECT_EQ(std::distance(std::sregex_iterator(listing.begin(), listing.end(), onTheRealOne),
                            std::sregex_iterator()),
              4)
        << listing;
}

// Nothing moves but the caption: the card keeps its sink.
TEST_P(PulseOutputsFollowing, NameWhatIsPluggedIn) {
    const auto card = rigs::makeFakeCard(*server_);
    server_->startAndWait();
    card->insert();
    startFollower();
    ASSERT_TRUE(choose(Choice::Apart));
    for (const char* category : {"Audio/Video", "Ringtone", "PhoneCall"})
        EXPECT_EQ(routeOf(category), "Speaker");
    card->plug(rigs::FakeCard::Plug::Headphones);
    for (const char* category : {"Audio/Video", "Ringtone", "PhoneCall"})
        EXPECT_TRUE(waitForRoute(category, "Headphones")) << category;
    card->unplug(rigs::FakeCard::Plug::Headphones);
    EXPECT_TRUE(waitForRoute("Audio/Video", "Speaker"));
}

TEST_P(PulseOutputsFollowing, GoToAHeadsetAndThroughItsProfilesAndBack) {
    rigs::FakeHeadset headset(*server_);
    server_->startAndWait();
    startFollower();
    ASSERT_TRUE(choose(Choice::Apart));
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Ringtone") && isSettled());
    headset.connect();
    const auto pick = [&] {
        // The session manager of the tests prefers the speaker.
        if (isPipeWire()) server_->pactl({"set-default-sink", headset.sinkName()});
        return waitForOutputs(headset.sinkName());
    };
    EXPECT_TRUE(pick());
    EXPECT_TRUE(waitForRoute("Audio/Video", "HeadphonesBT"));
    headset.choose(rigs::FakeHeadset::Profile::HandsFree);
    EXPECT_TRUE(pick());
    EXPECT_TRUE(waitForRoute("PhoneCall", "HeadsetBT"));
    headset.disconnect();
    EXPECT_TRUE(waitUntil([&] { return !routeOf("Audio/Video").ends_with("BT"); }));
    EXPECT_TRUE(waitUntil([&] { return outputs().outputs().size() == 4 && !outputs().isBusy(); }));
    EXPECT_TRUE(waitToRead("Ringtone", 0.5F));
    // The session manager tells of the default output after those of the outputs.
    EXPECT_TRUE(waitUntil([&] { return defaultSink() == outputOf("multimedia"); }));
    EXPECT_EQ(modules(), 4);
}

// Newer servers report 100 % of a sink that has never run, whatever it is set to.
TEST_P(PulseOutputsFollowing, ShowWhatAnotherProgramSetsBeforeAnythingPlays) {
    server_->startAndWait();
    startFollower();
    ASSERT_TRUE(choose(Choice::Apart));
    server_->pactl({"set-sink-volume", outputOf("call"), "32768"});
    EXPECT_TRUE(waitToRead("PhoneCall", 0.5F));
    server_->pactl({"set-sink-mute", outputOf("alarm"), "1"});
    EXPECT_TRUE(waitToRead("role:alarm", 0));
    server_->pactl({"set-sink-volume", outputOf("multimedia"), "98304"});
    EXPECT_TRUE(waitToRead("Audio/Video", 1));
    server_->pactl({"set-sink-volume", "spk", "16384"});
    EXPECT_TRUE(waitToRead("sink:@REAL@", 0.25F));
    EXPECT_EQ(volumeOf("Audio/Video"), 1);
}
