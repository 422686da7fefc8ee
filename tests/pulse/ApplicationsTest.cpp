#include "tests/pulse/ServiceFixture.hpp"

#include <dlfcn.h>

#include <stdexcept>

// Rows for applications, roles, inputs and conferences: objects that come and go, and consist of
// any number of streams.

namespace {
int streamReads = 0;
}

/// The library's own, which the service's call passes on its way.
extern "C" pa_operation* pa_context_get_sink_input_info_list(pa_context* context,
                                                             pa_sink_input_info_cb_t callback,
                                                             void* userdata) {
    ++streamReads;
    using Read = decltype(pa_context_get_sink_input_info_list);
    static auto* const read =
        reinterpret_cast<Read*>(dlsym(RTLD_NEXT, "pa_context_get_sink_input_info_list"));
    return read(context, callback, userdata);
}

class PulseApplications : public OnBothServers {
 protected:
    void SetUp() override {
        startBoth();
        ASSERT_TRUE(waitUntil([&] { return takesPolicies(); }));
        game_ = std::make_unique<rigs::OtherProgram>(server_->address(), identity("Game", 4001));
        other_ = std::make_unique<rigs::OtherProgram>(server_->address(), identity("Other", 4002));
    }
    /// Servers take clients some milliseconds before streams.
    bool takesPolicies() {
        try {
            server_->pactl({"set-default-sink", "spk"});
            return true;
        } catch (const std::runtime_error&) {
            return false;
        }
    }
    static rigs::OtherProgram::Identity identity(const std::string& name, unsigned process) {
        return {name, process};
    }

    std::unique_ptr<rigs::OtherProgram> game_;
    std::unique_ptr<rigs::OtherProgram> other_;
};
INSTANTIATE_TEST_SUITE_P(On, PulseApplications, bothServers, serverName);

TEST_P(PulseApplications, CannotBeReadUntilTheyPlayAndAreTheirStreamsThen) {
    EXPECT_EQ(volumeOf("app:Game"), unreadable);
    EXPECT_FALSE(controller_->setVolumeTo(0.5F, "app:Game"));
    const auto music = other_->play({});
    const auto sounds = game_->play({});
    ASSERT_TRUE(waitForVolume("app:Game", 1));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "app:Game"));
    EXPECT_TRUE(waitForStream(*sounds, {16384, 16384}));
    EXPECT_TRUE(waitForVolume("app:Game", 0.25F));
    EXPECT_EQ(music->volumes(), (Channels{65536, 65536}));
}

TEST_P(PulseApplications, HaveAllTheirStreamsMovedAndUnmuted) {
    const auto sounds = game_->play({});
    const auto voices = game_->play({.role = "game", .channels = 1});
    ASSERT_TRUE(waitToRead("app:game", 1));
    server_->pactl({"set-sink-input-mute", sounds->index(), "1"});
    server_->pactl({"set-sink-input-volume", voices->index(), "32768"});
    ASSERT_TRUE(waitForVolume("app:game", 0.5F)) << "the muted one is silent";
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "app:game"));
    EXPECT_TRUE(waitForStream(*sounds, {16384, 16384}));
    EXPECT_TRUE(waitForStream(*voices, {16384}));
    EXPECT_TRUE(waitUntil([&] { return !sounds->isMuted(); }));
}

// To read hundreds takes the server as long as to move them.
TEST_P(PulseApplications, AreReadOnceOrTwiceHoweverManyStreamsAreMoved) {
    std::vector<std::unique_ptr<rigs::PlayingStream>> streams;
    while (streams.size() < 60)
        streams.push_back(game_->play({}));
    ASSERT_TRUE(waitToRead("app:Game", 1));
    runFor(0.5);  // The last stream's own events.
    streamReads = 0;
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "app:Game"));
    ASSERT_TRUE(waitUntil([&] { return !controller_->isWriting(); }));
    EXPECT_LE(streamReads, isPipeWire() ? 2 : 60);
    for (const auto& stream : streams)
        EXPECT_TRUE(waitForStream(*stream, {16384, 16384}));
}

TEST_P(PulseApplications, GiveTheUsersVolumeToTheirNextStreams) {
    auto sounds = game_->play({});
    ASSERT_TRUE(waitToRead("app:Game", 1));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "app:Game"));
    ASSERT_TRUE(waitForStream(*sounds, {16384, 16384}));
    const auto more = game_->play({.role = "music"});
    EXPECT_TRUE(waitForStream(*more, {16384, 16384}));
    sounds.reset();
    runFor(0.6);
    EXPECT_EQ(more->volumes(), (Channels{16384, 16384})) << "or the server moved it back";
    EXPECT_EQ(volumeOf("app:Game"), 0.25F);
}

TEST_P(PulseApplications, KeepTheUsersVolumeWhileNothingPlays) {
    auto sounds = game_->play({});
    ASSERT_TRUE(waitToRead("app:Game", 1));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "app:Game"));
    ASSERT_TRUE(waitForStream(*sounds, {16384, 16384}));
    sounds.reset();
    runFor(0.2);
    EXPECT_EQ(volumeOf("app:Game"), 0.25F);
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "app:Game"));
    ASSERT_TRUE(waitForVolume("app:Game", 0.5F));
    const auto next = game_->play({.role = "music"});
    EXPECT_TRUE(waitForStream(*next, {32768, 32768}));
}

TEST_P(PulseApplications, TakeWhatAnotherMixerGivesThemAfterTheirStreamsEnd) {
    auto other = pulse::connectToServer(server_->address());
    const auto otherShows = [&](float volume) {
        float shown = unreadable;
        return other->getVolume(shown, "app:Game") && shown == volume;
    };
    auto sounds = game_->play({});
    ASSERT_TRUE(waitUntil([&] { return otherShows(1); }));
    ASSERT_TRUE(waitToRead("Ringtone", 1));
    ASSERT_TRUE(other->setVolumeTo(0.75F, "app:Game"));
    ASSERT_TRUE(waitToRead("app:Game", 0.75F));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "app:Game"));
    ASSERT_TRUE(waitUntil([&] { return otherShows(0.25F); }));
    runFor(0.5);
    sounds.reset();
    runFor(0.3);
    ASSERT_TRUE(other->setVolumeTo(0.5F, "app:Game"));
    EXPECT_TRUE(waitUntil([&] { return volumeOf("app:Game") == 0.5F; }, 2)) << volumeOf("app:Game");
    for (const char* role : {"", "music"}) {
        const auto next = game_->play({.role = role});
        EXPECT_TRUE(waitForStream(*next, {32768, 32768}));
        runFor(0.4);
        EXPECT_EQ(next->volumes(), (Channels{32768, 32768}));
    }
}

TEST_P(PulseApplications, BecomeUnreadableWithTheirLastStreamWhereTheUserNeverMovedThem) {
    auto sounds = game_->play({});
    ASSERT_TRUE(waitToRead("app:Game", 1));
    int rereads = 0;
    controller_->setAvailabilityHandler([&] { ++rereads; });
    sounds.reset();
    EXPECT_TRUE(waitUntil([&] { return rereads > 0; }));
    EXPECT_EQ(volumeOf("app:Game"), unreadable);
}

TEST_P(PulseApplications, FollowChangesByOtherProgramsToTheirStreams) {
    const auto sounds = game_->play({});
    ASSERT_TRUE(waitToRead("app:Game", 1));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "app:Game"));
    ASSERT_TRUE(waitForStream(*sounds, {16384, 16384}));
    runFor(0.5);
    server_->pactl({"set-sink-input-volume", sounds->index(), "32768"});
    ASSERT_TRUE(waitForVolume("app:Game", 0.5F));
    const auto more = game_->play({.role = "music"});
    EXPECT_TRUE(waitForStream(*more, {32768, 32768}));
}

TEST_P(PulseApplications, AreConferencesWhileTheyRecordToo) {
    const auto music = other_->play({});
    const auto voices = game_->play({});
    runFor(0.1);
    EXPECT_EQ(volumeOf("VideoConference"), unreadable);
    auto recording = game_->record();
    ASSERT_TRUE(waitForVolume("VideoConference", 1));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "VideoConference"));
    EXPECT_TRUE(waitForStream(*voices, {16384, 16384}));
    EXPECT_EQ(music->volumes(), (Channels{65536, 65536}));
}

TEST_P(PulseApplications, GiveTheUsersVolumeToTheNextConference) {
    auto voices = game_->play({});
    auto recording = game_->record();
    ASSERT_TRUE(waitForVolume("VideoConference", 1));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "VideoConference"));
    ASSERT_TRUE(waitForStream(*voices, {16384, 16384}));
    recording.reset();
    voices.reset();
    runFor(0.2);
    EXPECT_EQ(volumeOf("VideoConference"), 0.25F);
    const auto next = other_->play({.role = "music"});
    const auto nextRecording = other_->record();
    EXPECT_TRUE(waitForStream(*next, {16384, 16384}));
}

TEST_P(PulseApplications, GiveACallsVolumeToTheNextOne) {
    auto call = game_->play({.role = "phone"});
    ASSERT_TRUE(waitForVolume("PhoneCall", 1));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "PhoneCall"));
    ASSERT_TRUE(waitForStream(*call, {16384, 16384}));
    call.reset();
    runFor(0.3);
    EXPECT_EQ(volumeOf("PhoneCall"), 0.25F);
    const auto next = other_->play({.role = "phone"});
    EXPECT_TRUE(waitForStream(*next, {16384, 16384}));
}

TEST_P(PulseApplications, HaveRowsBesideThemForDevicesByName) {
    EXPECT_EQ(volumeOf("sink:hp"), 1);
    EXPECT_EQ(volumeOf("sink:gone"), unreadable);
    EXPECT_EQ(routeOf("sink:hp"), "Headphones");
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "sink:hp"));
    EXPECT_TRUE(waitForSink("hp", {16384, 16384}));
    EXPECT_EQ(volumeOf("sink:@DEFAULT_SINK@"), 1);
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "sink:@DEFAULT_SINK@"));
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.5F));
    EXPECT_TRUE(waitForVolume("sink:@DEFAULT_SINK@", 0.5F));
}

TEST_P(PulseApplications, HaveRowsBesideThemForInputs) {
    EXPECT_EQ(volumeOf("source:gone"), unreadable);
    EXPECT_EQ(volumeOf("source:hp.monitor"), 1);
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "source:hp.monitor"));
    EXPECT_TRUE(waitForVolume("source:hp.monitor", 0.25F));
    server_->pactl({"set-source-volume", "hp.monitor", "32768"});
    EXPECT_TRUE(waitForVolume("source:hp.monitor", 0.5F));
    server_->pactl({"set-source-mute", "hp.monitor", "1"});
    EXPECT_TRUE(waitForVolume("source:hp.monitor", 0));
    server_->pactl({"set-default-source", "hp.monitor"});
    ASSERT_TRUE(waitToRead("source:@DEFAULT_SOURCE@", 0));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "source:@DEFAULT_SOURCE@"));
    EXPECT_TRUE(waitForVolume("source:hp.monitor", 0.25F));
}
