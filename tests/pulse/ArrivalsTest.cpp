#include "backends/pulse/Arrivals.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

using namespace pulse;

namespace {
const VolumeObject speaker{VolumeObject::Kind::Sink, "spk"};
const Target speakerTarget{Target::Kind::Sink, "spk"};
}  // namespace

/// In virtual time, with reads that the test answers.
class ArrivalsTest : public testing::Test {
 protected:
    ArrivalsTest() {
        NSRunLoop::mainRunLoop().setClock([this] { return now; });
        mirrorHas(100);
    }
    ~ArrivalsTest() override {
        arrivals.clear();
        NSRunLoop::mainRunLoop().setClock({});
    }

    void mirrorHas(pa_volume_t volume) { mirror.sinks["spk"].volume = {2, {volume, volume}}; }
    void write(pa_volume_t volume, const Target& target = speakerTarget) {
        arrivals.expect(speaker, {{.target = target, .volume = {2, {volume, volume}}}});
        arrivals.await(
            speaker, [this](auto afterwards) { reads.push_back(std::move(afterwards)); },
            [this] { ++arrived; });
    }
    void answerRead() { std::exchange(reads, {}).at(0)(); }
    void advance(double seconds) {
        now += seconds;
        NSRunLoop::mainRunLoop().runDue();
    }

    double now = 1;
    ServerMirror mirror;
    Arrivals arrivals{mirror};
    std::vector<std::function<void()>> reads;
    int arrived = 0;
};

TEST_F(ArrivalsTest, AreSeenByAReadThatBeginsAfterTheAcknowledgement) {
    write(200);
    mirrorHas(200);
    EXPECT_EQ(arrived, 0);
    answerRead();
    EXPECT_EQ(arrived, 1);
    EXPECT_TRUE(reads.empty());
}

TEST_F(ArrivalsTest, AreAwaitedByReadingAgainWhileNothingHasChanged) {
    write(200);
    for (int i = 0; i < 5; ++i) {
        answerRead();
        EXPECT_TRUE(reads.empty()) << "read again without a pause";
        advance(Arrivals::retrySeconds);
    }
    EXPECT_EQ(arrived, 0);
    mirrorHas(200);
    answerRead();
    EXPECT_EQ(arrived, 1);
}

TEST_F(ArrivalsTest, AreAnyOtherVolumeToo) {
    write(200);
    mirrorHas(190);  // As a device with few steps rounds it.
    answerRead();
    EXPECT_EQ(arrived, 1);
}

TEST_F(ArrivalsTest, AreThereWhereThatVolumeWasBefore) {
    write(100);
    answerRead();
    EXPECT_EQ(arrived, 1);
}

TEST_F(ArrivalsTest, AreNotAwaitedForLong) {
    write(200);
    advance(Arrivals::longestSeconds - 0.001);
    answerRead();
    EXPECT_EQ(arrived, 0);
    advance(0.0011);
    answerRead();
    EXPECT_EQ(arrived, 1);
}

TEST_F(ArrivalsTest, AreNotAwaitedOfWhatIsGoneOrKeptForARole) {
    write(200);
    mirror.sinks.clear();
    answerRead();
    EXPECT_EQ(arrived, 1);
    mirror.roleEntries.emplace();
    write(200, {Target::Kind::RoleEntry, roleEntryName("event")});
    answerRead();
    EXPECT_EQ(arrived, 2);
}

TEST_F(ArrivalsTest, AreForgottenWithTheConnection) {
    write(200);
    arrivals.clear();
    mirrorHas(200);
    answerRead();
    EXPECT_EQ(arrived, 0);
    write(300);
    answerRead();
    arrivals.clear();
    advance(1);
    EXPECT_TRUE(reads.empty());
    EXPECT_EQ(arrived, 0);
}
