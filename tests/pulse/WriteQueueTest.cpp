#include "backends/pulse/WriteQueue.hpp"

#include <gtest/gtest.h>

#include <vector>

using namespace pulse;

namespace {
const VolumeObject speaker{VolumeObject::Kind::Sink, "spk"};
const VolumeObject event{VolumeObject::Kind::Role, "event"};

Setting to(float fraction) {
    return {.fraction = fraction};
}
}  // namespace

class WriteQueueTest : public testing::Test {
 protected:
    struct Sent {
        VolumeObject object;
        Setting wanted;
        std::uint64_t ticket;
    };

    std::vector<Sent> sent;
    std::vector<std::uint64_t> confirming;
    WriteQueue queue{
        [this](const VolumeObject& object, const Setting& wanted, std::uint64_t ticket) {
            sent.push_back({object, wanted, ticket});
        },
        [this](const VolumeObject&, std::uint64_t ticket) { confirming.push_back(ticket); }};
};

TEST_F(WriteQueueTest, SendsTheFirstAtOnce) {
    queue.set(speaker, to(0.5F));
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].object, speaker);
    EXPECT_EQ(sent[0].wanted, to(0.5F));
    EXPECT_EQ(queue.pending(speaker), to(0.5F));
}

TEST_F(WriteQueueTest, SendsOnlyTheNewestBehindTheOneInFlight) {
    for (const float fraction : {0.1F, 0.2F, 0.3F, 0.4F})
        queue.set(speaker, to(fraction));
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(queue.pending(speaker), to(0.4F));
    queue.acknowledged(speaker, sent[0].ticket);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[1].wanted, to(0.4F));
    queue.acknowledged(speaker, sent[1].ticket);
    EXPECT_EQ(sent.size(), 2U);
}

TEST_F(WriteQueueTest, KeepsWhatANewerSettingDoesNotSay) {
    queue.set(speaker, {.fraction = 0.5F, .mute = Mute::Off});
    queue.set(speaker, {.mute = Mute::On});
    const Setting both{0.5F, Mute::On};
    EXPECT_EQ(queue.pending(speaker), both);
    queue.acknowledged(speaker, sent[0].ticket);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[1].wanted, both) << "the volume may still be on its way";
    queue.acknowledged(speaker, sent[1].ticket);
    queue.confirmed(speaker, sent[1].ticket);
    queue.set(speaker, {.mute = Mute::Off});
    EXPECT_EQ(sent[2].wanted, (Setting{.mute = Mute::Off}));
}

TEST_F(WriteQueueTest, SendsAValueThatReturnsToTheOneInFlight) {
    queue.set(speaker, to(0.8F));
    queue.set(speaker, to(0.3F));
    queue.set(speaker, to(0.8F));
    queue.acknowledged(speaker, sent[0].ticket);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[1].wanted, to(0.8F));
}

TEST_F(WriteQueueTest, SendsAValueOnceThatIsSetAgainWhileItIsInFlight) {
    queue.set(speaker, to(0.8F));
    queue.set(speaker, to(0.8F));
    queue.acknowledged(speaker, sent[0].ticket);
    EXPECT_EQ(sent.size(), 1U);
    EXPECT_EQ(confirming, std::vector<std::uint64_t>{sent[0].ticket});
}

TEST_F(WriteQueueTest, StaysPendingUntilTheServerWasAskedAgain) {
    queue.set(speaker, to(0.5F));
    queue.acknowledged(speaker, sent[0].ticket);
    ASSERT_EQ(confirming, std::vector<std::uint64_t>{sent[0].ticket});
    EXPECT_EQ(queue.pending(speaker), to(0.5F));
    queue.confirmed(speaker, confirming[0]);
    EXPECT_EQ(queue.pending(speaker), std::nullopt);
}

TEST_F(WriteQueueTest, IgnoresAConfirmationThatANewerValueHasOvertaken) {
    queue.set(speaker, to(0.5F));
    queue.acknowledged(speaker, sent[0].ticket);
    queue.set(speaker, to(0.6F));
    ASSERT_EQ(sent.size(), 2U);
    queue.confirmed(speaker, confirming[0]);
    EXPECT_EQ(queue.pending(speaker), to(0.6F));
    queue.acknowledged(speaker, sent[1].ticket);
    queue.confirmed(speaker, confirming[0]);
    EXPECT_EQ(queue.pending(speaker), to(0.6F));
    queue.confirmed(speaker, confirming[1]);
    EXPECT_EQ(queue.pending(speaker), std::nullopt);
}

TEST_F(WriteQueueTest, KeepsObjectsApart) {
    queue.set(speaker, to(0.5F));
    queue.set(event, to(0.6F));
    ASSERT_EQ(sent.size(), 2U);
    queue.acknowledged(speaker, sent[0].ticket);
    queue.confirmed(speaker, sent[0].ticket);
    EXPECT_EQ(queue.pending(speaker), std::nullopt);
    EXPECT_EQ(queue.pending(event), to(0.6F));
}

TEST_F(WriteQueueTest, IgnoresAnswersToWhatWasForgotten) {
    queue.set(speaker, to(0.5F));
    queue.clear();
    EXPECT_EQ(queue.pending(speaker), std::nullopt);
    queue.set(speaker, to(0.6F));
    queue.acknowledged(speaker, sent[0].ticket);
    queue.unheeded(speaker, sent[0].ticket);
    queue.confirmed(speaker, sent[0].ticket);
    EXPECT_TRUE(confirming.empty());
    EXPECT_EQ(sent.size(), 2U);
    EXPECT_EQ(queue.pending(speaker), to(0.6F));
}

TEST_F(WriteQueueTest, IgnoresAnswersThatComeTwiceOrForStrangers) {
    queue.acknowledged(speaker, 1);
    queue.unheeded(speaker, 1);
    queue.confirmed(speaker, 1);
    queue.set(speaker, to(0.5F));
    queue.confirmed(speaker, sent[0].ticket);
    EXPECT_EQ(queue.pending(speaker), to(0.5F));
    queue.acknowledged(speaker, sent[0].ticket);
    queue.acknowledged(speaker, sent[0].ticket);
    queue.unheeded(speaker, sent[0].ticket);
    EXPECT_EQ(confirming.size(), 1U);
    EXPECT_EQ(sent.size(), 1U);
}

TEST_F(WriteQueueTest, SendsAValueAgainBehindItselfWhenItMustBe) {
    queue.set(speaker, to(0.8F));
    queue.set(speaker, to(0.8F), WriteQueue::Repeat::Send);
    queue.set(speaker, to(0.8F), WriteQueue::Repeat::Send);
    ASSERT_EQ(sent.size(), 1U);
    queue.acknowledged(speaker, sent[0].ticket);
    ASSERT_EQ(sent.size(), 2U);
    queue.acknowledged(speaker, sent[1].ticket);
    EXPECT_EQ(sent.size(), 2U);
}

TEST_F(WriteQueueTest, SendsAValueThatMovedNothingASecondTimeButNotAThird) {
    queue.set(speaker, to(0.8F));
    queue.unheeded(speaker, sent[0].ticket);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[1].wanted, to(0.8F));
    EXPECT_TRUE(confirming.empty());
    queue.set(speaker, to(0.8F));
    queue.unheeded(speaker, sent[1].ticket);
    EXPECT_EQ(sent.size(), 2U);
    EXPECT_EQ(confirming, std::vector<std::uint64_t>{sent[1].ticket});
    queue.confirmed(speaker, sent[1].ticket);
    EXPECT_EQ(queue.pending(speaker), std::nullopt);
}

TEST_F(WriteQueueTest, SendsTheNewerValueInsteadOfOneThatMovedNothing) {
    queue.set(speaker, to(0.8F));
    queue.set(speaker, to(0.3F));
    queue.unheeded(speaker, sent[0].ticket);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[1].wanted, to(0.3F));
    queue.unheeded(speaker, sent[1].ticket);
    ASSERT_EQ(sent.size(), 3U) << "a value that was sent once only";
    EXPECT_EQ(sent[2].wanted, to(0.3F));
    queue.set(speaker, to(0.4F));
    queue.acknowledged(speaker, sent[2].ticket);
    ASSERT_EQ(sent.size(), 4U);
    EXPECT_EQ(sent[3].wanted, to(0.4F));
}

TEST_F(WriteQueueTest, IsEmptyOnceEverythingIsConfirmed) {
    EXPECT_TRUE(queue.isEmpty());
    queue.set(speaker, to(0.8F));
    queue.acknowledged(speaker, sent[0].ticket);
    EXPECT_FALSE(queue.isEmpty());
    queue.confirmed(speaker, sent[0].ticket);
    EXPECT_TRUE(queue.isEmpty());
}

TEST(WriteQueue, TakesAnAcknowledgementFromInsideTheSending) {
    WriteQueue* self = nullptr;
    int confirmations = 0;
    WriteQueue queue([&](const VolumeObject& object, const Setting&,
                         std::uint64_t ticket) { self->acknowledged(object, ticket); },
                     [&](const VolumeObject&, std::uint64_t) { ++confirmations; });
    self = &queue;
    queue.set(speaker, to(0.5F));
    EXPECT_EQ(confirmations, 1);
    EXPECT_EQ(queue.pending(speaker), to(0.5F));
}
