#include "tests/pulse/LiveMixer.hpp"
#include "tests/pulse/Memory.hpp"
#include "tests/pulse/ServiceFixture.hpp"
#include "tests/rigs/TurnWatch.hpp"
#include "tests/support/RecordingCanvas.hpp"

#include <glib.h>

// Another program that never stops moving the volume.

class PulseFlood : public OnBothServers {
 protected:
    static constexpr double seconds = 10;
    static constexpr double frameSeconds = 1.0 / 60;

    /// Sends a volume every millisecond and paints the mixer's window as a screen would.
    class Flood {
     public:
        Flood(rigs::OtherProgram& other, LiveMixer& mixer) : other_(other), mixer_(mixer) {}
        static unsigned volumeAt(unsigned count) { return (count * 7919) % 65537; }
        void run();

        unsigned sent = 0;
        unsigned paints = 0;
        rigs::TurnWatch turns;

     private:
        void sendDue(double elapsed);
        void paintIfDue(double elapsed);

        rigs::OtherProgram& other_;
        LiveMixer& mixer_;
        double lastFrame_ = 0;
    };
};
INSTANTIATE_TEST_SUITE_P(On, PulseFlood, bothServers, serverName);

void PulseFlood::Flood::sendDue(double elapsed) {
    for (; sent < elapsed * 1000; ++sent)
        other_.sendSinkVolume("spk", volumeAt(sent));
}

void PulseFlood::Flood::paintIfDue(double elapsed) {
    if (elapsed - lastFrame_ < frameSeconds || mixer_.window()->damage().empty()) return;
    lastFrame_ = elapsed;
    ++paints;
    RecordingCanvas canvas;
    for (const CGRect& rect : mixer_.window()->takeDamage())
        mixer_.window()->layoutAndPaint(canvas, rect);
}

void PulseFlood::Flood::run() {
    const gint64 start = g_get_monotonic_time();
    waitUntil(
        [&] {
            const double now = double(g_get_monotonic_time() - start) / G_USEC_PER_SEC;
            turns.turn();
            sendDue(now);
            paintIfDue(now);
            return now >= seconds;
        },
        2 * seconds);
}

TEST_P(PulseFlood, LeavesTheWindowResponsiveAndEndsOnTheTrueVolume) {
    startBoth();
    rigs::OtherProgram other(server_->address());
    LiveMixer mixer(controller_, {"Ringtone", "Audio/Video"});
    posted_.reserve(10000);
    other.sendSinkVolume("spk", 1);
    ASSERT_TRUE(waitForVolume("Audio/Video", 1.0F / 65536));
    posted_.clear();
    const std::size_t bytesBefore = allocatedBytes();
    const std::ptrdiff_t descriptorsBefore = openDescriptors();

    Flood flood(other, mixer);
    flood.run();
    const auto last = static_cast<float>(Flood::volumeAt(flood.sent - 1)) / 65536;
    EXPECT_TRUE(waitForVolume("Audio/Video", last));
    EXPECT_NEAR(mixer.sliderValue(1), 100 * last, 100 * volumeTolerance);
    EXPECT_EQ(server_->sinkVolumes("spk")[0], Flood::volumeAt(flood.sent - 1));

    EXPECT_GE(flood.sent, 9000U);
    // What is shown changes a hundred times a second at most, and does change.
    EXPECT_LE(volumesPosted("Audio/Video").size(), 100 * seconds + 10);
    EXPECT_GE(volumesPosted("Audio/Video").size(), 100U);
    EXPECT_LE(flood.paints, 60 * seconds + 1);
    EXPECT_GE(flood.paints, 100U);
    EXPECT_LT(flood.turns.longestSeconds(),
              0.2);  // A fraction of a millisecond on an idle machine.
    EXPECT_LT(allocatedBytes(), bytesBefore + 256 * 1024);
    EXPECT_EQ(openDescriptors(), descriptorsBefore);
}
