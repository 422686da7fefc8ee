#include "backends/pulse/Arrivals.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

using namespace pulse;

namespace {
const VolumeObject speaker{VolumeObject::Kind::Sink, "spk"};
const Target speakerTarget{Target::Kind::Sink, "spk"};
const Target ringing{Target::Kind::RoleEntry, roleEntryName("event")};
}  // namespace

using Outcomes = std::vector<Arrivals::Outcome>;

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
    void write(pa_volume_t volume, const Target& target = speakerTarget,
               Arrivals::Until until = Arrivals::Until::Taken) {
        arrivals.expect(speaker, {{.target = target, .volume = pa_cvolume{2, {volume, volume}}}});
        arrivals.await(
            speaker, until, [this](auto afterwards) { reads.push_back(std::move(afterwards)); },
            [this](Arrivals::Outcome outcome) { outcomes.push_back(outcome); });
    }
    void entryHas(pa_volume_t volume) {
        mirror.roleEntries.emplace();
        (*mirror.roleEntries)[ringing.name].volume = {2, {volume, volume}};
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
    Outcomes outcomes;
};

TEST_F(ArrivalsTest, AreSeenByAReadThatBeginsAfterTheAcknowledgement) {
    write(200);
    mirrorHas(200);
    EXPECT_EQ(outcomes, Outcomes{});
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Arrived});
    EXPECT_TRUE(reads.empty());
}

TEST_F(ArrivalsTest, AreAwaitedByReadingAgainWhileNothingHasChanged) {
    write(200);
    for (int i = 0; i < 5; ++i) {
        answerRead();
        EXPECT_TRUE(reads.empty()) << "read again without a pause";
        advance(Arrivals::retrySeconds);
    }
    EXPECT_EQ(outcomes, Outcomes{});
    mirrorHas(200);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Arrived});
}

TEST_F(ArrivalsTest, AreAnyOtherVolumeToo) {
    write(200);
    mirrorHas(190);  // As a device with few steps rounds it.
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Arrived});
}

TEST_F(ArrivalsTest, OfAMuteAreSeenByTheMuteAlone) {
    arrivals.expect(speaker, {{.target = speakerTarget, .mute = Mute::On}});
    arrivals.await(
        speaker, Arrivals::Until::Taken,
        [this](auto afterwards) { reads.push_back(std::move(afterwards)); },
        [this](Arrivals::Outcome outcome) { outcomes.push_back(outcome); });
    mirrorHas(200);  // Somebody else's volume.
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{});
    advance(Arrivals::retrySeconds);
    mirror.sinks["spk"].mute = Mute::On;
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Arrived});
}

TEST_F(ArrivalsTest, AreThereWhereThatVolumeWasBefore) {
    write(100);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Arrived});
}

TEST_F(ArrivalsTest, AreNotAwaitedForLongWhereNothingMoves) {
    write(200);
    advance(Arrivals::longestSeconds - 0.001);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{});
    advance(0.0011);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Unheeded});
}

TEST_F(ArrivalsTest, AreArrivalsHoweverLateTheyAreSeen) {
    write(200);
    advance(10 * Arrivals::longestSeconds);
    mirrorHas(200);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Arrived});
}

TEST_F(ArrivalsTest, AreNotAwaitedOfWhatIsGoneOrKeptForARole) {
    write(200);
    mirror.sinks.clear();
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Arrived});
    mirror.roleEntries.emplace();
    write(200, {Target::Kind::RoleEntry, roleEntryName("event")});
    answerRead();
    EXPECT_EQ(outcomes, Outcomes(2, Arrivals::Outcome::Arrived));
}

TEST_F(ArrivalsTest, OfWhatIsKeptForARoleAreAwaitedUntilARead) {
    entryHas(4000);
    write(2000, ringing, Arrivals::Until::Kept);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{});
    EXPECT_FALSE(arrivals.areExact(speaker));
    entryHas(3000);  // An earlier one of ours, which was on its way.
    advance(Arrivals::retrySeconds);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{});
    entryHas(2001);  // As its decimals come out.
    advance(Arrivals::retrySeconds);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Arrived});
    EXPECT_TRUE(arrivals.areExact(speaker));
    EXPECT_LT(now, 1.01) << "a fixed wait";
}

TEST_F(ArrivalsTest, OfWhatASessionManagerDoesNotKeepAreNotAwaitedForLong) {
    entryHas(40000);
    write(20000, ringing, Arrivals::Until::Kept);
    advance(Arrivals::longestKeepingSeconds - 0.001);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{});
    advance(0.0011);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Unheeded});
}

TEST_F(ArrivalsTest, AreNotMissedByAReadThatBeganEarlyAndTookLong) {
    write(200);
    advance(10 * Arrivals::longestSeconds);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{}) << "hundreds of streams take long to read";
    advance(Arrivals::retrySeconds);
    mirrorHas(200);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Arrived});
}

TEST_F(ArrivalsTest, EndWithoutACallWhenTheNextVolumeIsExpected) {
    write(200);
    const auto late = std::exchange(reads, {}).at(0);
    write(300);
    mirrorHas(200);
    late();
    EXPECT_EQ(outcomes, Outcomes{});
    mirrorHas(300);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{Arrivals::Outcome::Arrived});
    advance(1);
    EXPECT_TRUE(reads.empty());
}

TEST_F(ArrivalsTest, AreForgottenWithTheConnection) {
    write(200);
    arrivals.clear();
    mirrorHas(200);
    answerRead();
    EXPECT_EQ(outcomes, Outcomes{});
    write(300);
    answerRead();
    arrivals.clear();
    advance(1);
    EXPECT_TRUE(reads.empty());
    EXPECT_EQ(outcomes, Outcomes{});
}
