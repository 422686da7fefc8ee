#include "backends/pulse/writes/VolumeWriter.hpp"

#include <gtest/gtest.h>

using namespace pulse;

namespace {
const Target speaker{.kind = Target::Kind::Sink, .name = "spk"};
const Target event{.kind = Target::Kind::RestoreEntry, .name = "spk"};
const Target stream{.kind = Target::Kind::SinkInput, .sinkInputIndex = 7};

testing::AssertionResult channelsAre(const pa_cvolume& volume, pa_volume_t left,
                                     pa_volume_t right) {
    if (volume.channels == 2 && volume.values[0] == left && volume.values[1] == right)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << int{volume.channels} << " channels, " << volume.values[0] << ", " << volume.values[1];
}
}  // namespace

TEST(BalanceMemory, MovesTheLoudestChannelAndTheOtherWithIt) {
    BalanceMemory memory;
    memory.observe(speaker, {2, {40000, 20000}});
    EXPECT_TRUE(channelsAre(memory.volumeAt(speaker, 20000), 20000, 10000));
    EXPECT_TRUE(channelsAre(memory.volumeAt(speaker, 65536), 65536, 32768));
}

TEST(BalanceMemory, KeepsTheBalanceThroughSilence) {
    BalanceMemory memory;
    memory.observe(speaker, {2, {40000, 20000}});
    EXPECT_TRUE(channelsAre(memory.volumeAt(speaker, 0), 0, 0));
    memory.observe(speaker, {2, {0, 0}});
    EXPECT_TRUE(channelsAre(memory.volumeAt(speaker, 20000), 20000, 10000));
}

TEST(BalanceMemory, TakesTheBalanceThatSomeoneElseSets) {
    BalanceMemory memory;
    memory.observe(speaker, {2, {40000, 20000}});
    memory.volumeAt(speaker, 30000);
    memory.observe(speaker, {2, {10000, 30000}});
    EXPECT_TRUE(channelsAre(memory.volumeAt(speaker, 60000), 20000, 60000));
}

TEST(BalanceMemory, IsEvenAfterASilenceThatSomeoneElseMade) {
    BalanceMemory memory;
    memory.observe(speaker, {2, {0, 0}});
    EXPECT_TRUE(channelsAre(memory.volumeAt(speaker, 30000), 30000, 30000));
}

TEST(BalanceMemory, TellsObjectsOfTheSameNameApart) {
    BalanceMemory memory;
    memory.observe(speaker, {2, {40000, 20000}});
    EXPECT_TRUE(channelsAre(memory.volumeAt(event, 20000), 20000, 20000));
}

TEST(BalanceMemory, IsStereoForAnObjectNeverObservedOrForgotten) {
    BalanceMemory memory;
    EXPECT_TRUE(channelsAre(memory.volumeAt(speaker, 5), 5, 5));
    memory.observe(speaker, {2, {40000, 20000}});
    memory.clear();
    EXPECT_TRUE(channelsAre(memory.volumeAt(speaker, 5), 5, 5));
}

TEST(BalanceMemory, KeepsTheNumberOfChannels) {
    BalanceMemory memory;
    memory.observe(speaker, {1, {40000}});
    EXPECT_EQ(memory.volumeAt(speaker, 7).channels, 1);
    EXPECT_EQ(memory.volumeAt(speaker, 7).values[0], 7U);
}

TEST(BalanceMemory, ForgetsStreamsThatHaveEndedAndNothingElse) {
    BalanceMemory memory;
    for (const Target& target : {speaker, event, stream})
        memory.observe(target, {2, {40000, 20000}});
    ServerMirror mirror;
    mirror.sinkInputs.push_back({.index = 7});
    memory.forgetSinkInputsMissingIn(mirror);
    EXPECT_TRUE(memory.knows(stream));
    mirror.sinkInputs[0].index = 8;
    memory.forgetSinkInputsMissingIn(mirror);
    EXPECT_FALSE(memory.knows(stream));
    EXPECT_TRUE(memory.knows(speaker));
    EXPECT_TRUE(memory.knows(event));
}
