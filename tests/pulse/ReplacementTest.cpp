#include "platform/foundation/NSRunLoop.hpp"
#include "tests/pulse/Memory.hpp"
#include "tests/pulse/ServiceFixture.hpp"
#include "tests/rigs/TurnWatch.hpp"

#include <algorithm>
#include <csignal>

// Servers that hang for long, that come back as another one, and that never stay.

class PulseReplacement : public OnBothServers {
 protected:
    bool waitForBoth() { return waitToRead("Audio/Video", 1) && waitToRead("Ringtone", 1); }
};
INSTANTIATE_TEST_SUITE_P(On, PulseReplacement, bothServers, serverName);

TEST_P(PulseReplacement, TakesTheOtherServerAtTheSameAddressAndBack) {
    startBoth();
    const auto other =
        rigs::makeServer(isPipeWire() ? ServerKind::PulseAudio : ServerKind::PipeWire, folder_);
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Audio/Video"));
    ASSERT_TRUE(waitForSink("spk", {16384, 16384}));
    rigs::SoundServer* before = server_.get();
    rigs::SoundServer* after = other.get();
    for (int i = 0; i < 2; ++i) {
        before->stop(i == 0 ? SIGTERM : SIGKILL);
        ASSERT_TRUE(waitUntil([&] { return isUnavailable(); }));
        EXPECT_EQ(volumeOf("Audio/Video"), unreadable);
        EXPECT_FALSE(controller_->setVolumeTo(0.5F, "Audio/Video"));
        after->startAndWait();
        ASSERT_TRUE(waitForBoth()) << "or a set was kept for the other server";
        ASSERT_TRUE(controller_->setVolumeTo(0.75F, "Audio/Video"));
        EXPECT_TRUE(waitUntil([&] { return after->sinkVolumes("spk") == Channels{49152, 49152}; }));
        after->pactl({"set-sink-volume", "spk", "8192"});
        EXPECT_TRUE(waitForVolume("Audio/Video", 0.125F));
        std::swap(before, after);
    }
}

// A busy machine makes some returns slower, and not all.
TEST_P(PulseReplacement, FillsTheRowsWithinATenthOfASecondOfTheServersReturn) {
    startBoth();
    constexpr double limit = 0.1;
    const auto now = [] { return NSRunLoop::mainRunLoop().currentTime(); };
    double shortest = 1;
    for (int round = 0; round < 5 && shortest >= limit; ++round) {
        server_->stop(SIGKILL);
        ASSERT_TRUE(waitUntil([&] { return isUnavailable(); }));
        server_->start();
        double answers = 0;
        double filled = 0;
        ASSERT_TRUE(waitUntil([&] {
            if (!answers && server_->isReady()) answers = now();
            if (!filled && volumeOf("Audio/Video") == 1) filled = now();
            return answers && filled;
        }));
        shortest = std::min(shortest, filled - answers);
    }
    EXPECT_LT(shortest, limit);
}

TEST_P(PulseReplacement, ComesBackFromAHangOfFiveSeconds) {
    startBoth();
    server_->suspend();
    rigs::TurnWatch turns;
    const double end = NSRunLoop::mainRunLoop().currentTime() + 5;
    int sets = 0;
    waitUntil([&] {
        controller_->setVolumeTo(static_cast<float>(++sets % 100) / 100, "Audio/Video");
        turns.turn();
        return NSRunLoop::mainRunLoop().currentTime() >= end;
    });
    EXPECT_LT(turns.longestSeconds(), 0.5);
    EXPECT_TRUE(isUnavailable());
    EXPECT_EQ(volumeOf("Audio/Video"), unreadable);
    server_->resume();
    ASSERT_TRUE(waitUntil([&] { return volumeOf("Audio/Video") != unreadable; }));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Audio/Video"));
    EXPECT_TRUE(waitForSink("spk", {16384, 16384}));
    EXPECT_TRUE(waitForVolume("Audio/Video", 0.25F));
}

/// A finger that goes on while the servers come and go.
class PulseRestarts : public ServiceFixture {
 protected:
    using ServiceFixture::ServiceFixture;
    static constexpr int restarts = 200;

    bool dragUntil(const std::function<bool()>& condition) {
        return waitUntil([&] {
            controller_->setVolumeTo(static_cast<float>(++sets_ % 1000) / 1000, "Audio/Video");
            return condition();
        });
    }
    /// Restarts in that way while the drag goes on, and looks at what is left behind.
    void restartAndDrag(const std::function<void()>& restart);

 private:
    int sets_ = 0;
};

void PulseRestarts::restartAndDrag(const std::function<void()>& restart) {
    startBoth();
    posted_.reserve(100000);
    std::size_t bytesBefore = 0;
    std::ptrdiff_t descriptorsBefore = 0;
    for (int i = 0; i < restarts; ++i) {
        restart();
        const auto readable = [&] { return volumeOf("Audio/Video") != unreadable; };
        ASSERT_TRUE(dragUntil([&] { return isUnavailable() || !readable(); })) << i;
        ASSERT_TRUE(dragUntil([&] { return isReady() && readable(); })) << i;
        posted_.clear();
        if (i != restarts / 10) continue;
        bytesBefore = allocatedBytes();
        descriptorsBefore = openDescriptors();
    }
    EXPECT_LT(allocatedBytes(), bytesBefore + 64 * 1024);
    EXPECT_EQ(openDescriptors(), descriptorsBefore);
    controller_->setVolumeTo(0.25F, "Audio/Video");
    EXPECT_TRUE(waitForSink("spk", {16384, 16384})) << "the drag's last volume";
    EXPECT_TRUE(waitToRead("Audio/Video", 0.25F));
}

class PulseAudioRestarts : public PulseRestarts {
 protected:
    PulseAudioRestarts() : PulseRestarts(ServerKind::PulseAudio) {}
};

TEST_F(PulseAudioRestarts, LoseNothingInTwoHundredWhileADragGoesOn) {
    restartAndDrag([&] {
        server_->stop(SIGKILL);
        server_->start();
    });
}

class PipeWireRestarts : public PulseRestarts {
 protected:
    PipeWireRestarts() : PulseRestarts(ServerKind::PipeWire) {}
};

TEST_F(PipeWireRestarts, LoseNothingInTwoHundredWhileADragGoesOn) {
    restartAndDrag([&] { static_cast<rigs::PipeWireServer&>(*server_).restartPulseServer(); });
}
