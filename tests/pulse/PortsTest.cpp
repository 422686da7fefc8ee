#include "tests/pulse/LiveMixer.hpp"
#include "tests/pulse/ServiceFixture.hpp"
#include "tests/rigs/FakeCard.hpp"
#include "tests/rigs/FakePipeWireCard.hpp"

// A sound card with ports: what is plugged in names the route, and with it everything that hangs
// on the route.

using rigs::FakeCard;
using Plug = FakeCard::Plug;

class PulsePorts : public OnBothServers {
 protected:
    PulsePorts() : card_(rigs::makeFakeCard(*server_)) {
        server_->startAndWait();
        card_->insert();
    }
    /// The service in a mixer with these rows.
    void show(const std::vector<std::string>& categories, const std::string& settings = "") {
        startControllerAndWait();
        mixer_ = std::make_unique<LiveMixer>(controller_, categories, settings);
    }
    bool waitForCaption(NSInteger row, const std::string& text) {
        const bool came = waitUntil([&] { return mixer_->caption(row) == text; }, 5);
        EXPECT_EQ(mixer_->caption(row), text)
            << server_->pactl({"get-sink-volume", "@DEFAULT_SINK@"});
        return came;
    }
    void setDefaultSinkVolume(const std::string& volume) {
        server_->pactl({"set-sink-volume", "@DEFAULT_SINK@", volume});
    }

    std::unique_ptr<FakeCard> card_;
    std::unique_ptr<LiveMixer> mixer_;
};
INSTANTIATE_TEST_SUITE_P(On, PulsePorts, bothServers, serverName);

TEST_P(PulsePorts, NameTheRouteOfWhatIsPluggedInAndAgainTheSpeaker) {
    startControllerAndWait();
    EXPECT_EQ(routeOf("Audio/Video"), "Speaker");
    const std::pair<Plug, const char*> plugs[] = {{Plug::Headphones, "Headphones"},
                                                  {Plug::LineOut, "Line Out"}};
    for (const auto& [plug, route] : plugs) {
        card_->plug(plug);
        EXPECT_TRUE(waitForRoute("Audio/Video", route)) << routeOf("Audio/Video");
        card_->unplug(plug);
        EXPECT_TRUE(waitForRoute("Audio/Video", "Speaker")) << routeOf("Audio/Video");
    }
}

TEST_P(PulsePorts, NameTheScreen) {
    startControllerAndWait();
    card_->plug(Plug::Hdmi);
    EXPECT_TRUE(waitForRoute("Audio/Video", "HDMI")) << routeOf("Audio/Video");
}

TEST_P(PulsePorts, AreInTheCaptionAtOnceAlsoAtTheSameVolume) {
    show({"Audio/Video"});
    setDefaultSinkVolume("40%");
    ASSERT_TRUE(waitForCaption(0, "Audio/Video (Speaker): 40%"));
    card_->plug(Plug::Headphones);
    ASSERT_TRUE(waitForRoute("Audio/Video", "Headphones"));
    setDefaultSinkVolume("40%");
    EXPECT_TRUE(waitForCaption(0, "Audio/Video (Headphones): 40%"));
    card_->unplug(Plug::Headphones);
    EXPECT_TRUE(waitForCaption(0, "Audio/Video (Speaker): 40%"));
}

TEST_P(PulsePorts, HaveVolumesOfTheirOwn) {
    show({"Audio/Video"});
    setDefaultSinkVolume("30%");
    ASSERT_TRUE(waitForCaption(0, "Audio/Video (Speaker): 30%"));
    card_->plug(Plug::Headphones);
    ASSERT_TRUE(waitForRoute("Audio/Video", "Headphones"));
    setDefaultSinkVolume("70%");
    ASSERT_TRUE(waitForCaption(0, "Audio/Video (Headphones): 70%"));
    posted_.clear();
    card_->unplug(Plug::Headphones);
    ASSERT_TRUE(waitForRoute("Audio/Video", "Speaker"));
    if (!isPipeWire()) return;  // PulseAudio leaves the volume where it is, without its memory.
    EXPECT_TRUE(waitForCaption(0, "Audio/Video (Speaker): 30%"));
    // The server first says the new port at the old one's volume.
    for (const Posted& posted : posted_) {
        if (posted.category != "Audio/Video" || posted.route != "Speaker") continue;
        EXPECT_NEAR(posted.volume, 0.3F, 0.001F);
    }
}

TEST_P(PulsePorts, BindRingerAndMediaOnTheSpeakerOnly) {
    show({"Ringtone", "Audio/Video"}, bound);
    setDefaultSinkVolume("30%");
    ASSERT_TRUE(waitForCaption(1, "Audio/Video (Speaker): 30%"));
    EXPECT_EQ(mixer_->caption(0), "Ringtone: 30%");
    card_->plug(Plug::Headphones);
    ASSERT_TRUE(waitForRoute("Audio/Video", "Headphones"));
    setDefaultSinkVolume("55%");
    ASSERT_TRUE(waitForCaption(1, "Audio/Video (Headphones): 55%"));
    EXPECT_NE(mixer_->caption(0), "Ringtone: 55%");
    card_->unplug(Plug::Headphones);
    ASSERT_TRUE(waitForRoute("Audio/Video", "Speaker"));
    setDefaultSinkVolume("60%");
    ASSERT_TRUE(waitForCaption(1, "Audio/Video (Speaker): 60%"));
    EXPECT_EQ(mixer_->caption(0), "Ringtone: 60%");
}
