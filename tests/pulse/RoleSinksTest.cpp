#include "tests/pulse/ServiceFixture.hpp"

// Sessions that have a virtual device for each role: the categories don't depend on each other.

class PulseRoleSinks : public OnBothServers {
 protected:
    static std::string sinkOf(const std::string& role) {
        return "input.loopback.sink.role." + role;
    }
    /// Virtual devices of these roles that play on the device.
    void start(const std::vector<std::string>& roles, const std::string& master = "spk") {
        server_->startAndWait();
        for (const std::string& role : roles) {
            addRoleSink(role, master);
            ASSERT_TRUE(waitUntil([&] {
                return server_->pactl({"list", "short", "sinks"}).find(sinkOf(role)) !=
                       std::string::npos;
            }));
        }
        startControllerAndWait();
    }

    void addRoleSink(const std::string& role, const std::string& master) {
        if (!isPipeWire()) {
            server_->pactl({"load-module", "module-remap-sink", "sink_name=" + sinkOf(role),
                            "master=" + master, "sink_properties=device.intended_roles=" + role});
            return;
        }
        loopbacks_.emplace_back(
            std::vector<std::string>{
                "pw-loopback",
                "--capture-props=media.class=Audio/Sink node.name=" + sinkOf(role) +
                    " device.intended-roles=[\"" + role + "\"] audio.position=[FL,FR]",
                "--playback-props=media.role=Loopback node.name=output.loopback.sink.role." + role +
                    " target.object=" + master},
            test::ChildProcess::Setting{.environment = folder_.environment(),
                                        .log = folder_.log()});
    }

 private:
    std::vector<test::ChildProcess> loopbacks_;
};
INSTANTIATE_TEST_SUITE_P(On, PulseRoleSinks, bothServers, serverName);

TEST_P(PulseRoleSinks, AreMovedByTheirCategoryAndNothingElse) {
    start({"multimedia", "notification", "phone"});
    const std::pair<const char*, const char*> categories[] = {
        {"Audio/Video", "multimedia"}, {"Ringtone", "notification"}, {"PhoneCall", "phone"}};
    unsigned raw = 16384;
    for (const auto& [category, role] : categories) {
        ASSERT_TRUE(controller_->setVolumeTo(static_cast<float>(raw) / 65536, category));
        EXPECT_TRUE(waitForSink(sinkOf(role), {raw, raw})) << category;
        raw += 8192;
    }
    EXPECT_EQ(server_->sinkVolumes(sinkOf("multimedia")), (Channels{16384, 16384}));
    EXPECT_EQ(server_->sinkVolumes(sinkOf("notification")), (Channels{24576, 24576}));
    EXPECT_EQ(server_->sinkVolumes("spk"), (Channels{65536, 65536}));
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.25F));
    EXPECT_TRUE(waitForVolume("Ringtone", 0.375F));
    EXPECT_TRUE(waitForVolume("PhoneCall", 0.5F));
}

TEST_P(PulseRoleSinks, AreFollowed) {
    start({"multimedia", "notification"});
    server_->pactl({"set-sink-volume", sinkOf("notification"), "16384"});
    EXPECT_TRUE(waitForVolume("Ringtone", 0.25F));
    server_->pactl({"set-sink-mute", sinkOf("multimedia"), "1"});
    EXPECT_TRUE(waitForVolume("Audio/Video", 0));
    EXPECT_NEAR(volumeOf("Ringtone"), 0.25F, volumeTolerance);
}

TEST_P(PulseRoleSinks, LeaveTheVolumesOfTheStreamsThatAreRoutedToThem) {
    start({"multimedia", "notification"});
    rigs::OtherProgram program(server_->address());
    const auto ringing = program.play({.role = "event", .sink = sinkOf("notification")});
    const auto music = program.play({.role = "music", .sink = sinkOf("multimedia")});
    ASSERT_TRUE(waitForStream(*ringing, {65536, 65536}));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Ringtone"));
    ASSERT_TRUE(waitForSink(sinkOf("notification"), {16384, 16384}));
    runFor(0.1);
    EXPECT_EQ(ringing->volumes(), (Channels{65536, 65536}));
    EXPECT_EQ(music->volumes(), (Channels{65536, 65536}));
}

TEST_P(PulseRoleSinks, AreLookedPastForTheRouteAlsoWhenOneIsTheDefault) {
    start({"multimedia"}, "hp");
    EXPECT_TRUE(waitForRoute("Audio/Video", "Headphones")) << routeOf("Audio/Video");
    server_->pactl({"set-default-sink", sinkOf("multimedia")});
    ASSERT_TRUE(waitUntil(
        [&] { return server_->pactl({"get-default-sink"}) == sinkOf("multimedia") + "\n"; }));
    runFor(0.1);
    EXPECT_EQ(routeOf("Audio/Video"), "Headphones");
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Audio/Video"));
    EXPECT_TRUE(waitForSink(sinkOf("multimedia"), {16384, 16384}));
    EXPECT_EQ(server_->sinkVolumes("hp"), (Channels{65536, 65536}));
}
