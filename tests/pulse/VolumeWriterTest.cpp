#include "tests/pulse/VolumeWriterFixture.hpp"

namespace test {

TEST_F(VolumeWriterTest, SendsTheFirstAtOnce) {
    writer.set(speaker, to(0.5F));
    EXPECT_EQ(server.asked(), std::vector{volumeAt(0.5F)});
    EXPECT_EQ(writer.pending(speaker), to(0.5F));
}

TEST_F(VolumeWriterTest, SendsOnlyTheNewestBehindTheOneInFlight) {
    for (const float fraction : {0.1F, 0.2F, 0.3F, 0.4F})
        writer.set(speaker, to(fraction));
    ASSERT_EQ(sentSoFar(), 1U);
    EXPECT_EQ(writer.pending(speaker), to(0.4F));
    answer(0);
    EXPECT_EQ(server.asked(), (std::vector{volumeAt(0.1F), volumeAt(0.4F)}));
    answer(1);
    EXPECT_EQ(sentSoFar(), 2U);
}

TEST_F(VolumeWriterTest, KeepsWhatANewerSettingDoesNotSay) {
    writer.set(speaker, {.fraction = 0.5F, .mute = Mute::Off});
    writer.set(speaker, silence);
    EXPECT_EQ(writer.pending(speaker), (Setting{0.5F, Mute::On}));
    answer(0);
    EXPECT_EQ(server.asked(), (std::vector{volumeAt(0.5F), muted(Mute::On), volumeAt(0.5F)}))
        << "the volume may still be on its way";
    answer(1);
    answer(2);
    answerRead();
    ASSERT_TRUE(writer.isIdle());
    writer.set(speaker, {.mute = Mute::Off});
    EXPECT_EQ(sentSoFar(), 4U);
    EXPECT_EQ(server.calls.back().asked, muted(Mute::Off));
}

TEST_F(VolumeWriterTest, SilencesBeforeTheVolumeMovesAndUnmutesAfterIt) {
    writer.set(speaker, {0.5F, Mute::On});
    EXPECT_EQ(server.asked(), (std::vector{muted(Mute::On), volumeAt(0.5F)}));
    writer.set(speaker, {0.6F, Mute::Off});
    answer(0);
    EXPECT_EQ(sentSoFar(), 2U) << "the volume was not answered yet";
    answer(1);
    EXPECT_EQ(server.asked(),
              (std::vector{muted(Mute::On), volumeAt(0.5F), volumeAt(0.6F), muted(Mute::Off)}));
}

TEST_F(VolumeWriterTest, UnmutesOnceInADragAndNotWhereNothingIsMuted) {
    writer.set(speaker, {0.5F, Mute::Off});
    EXPECT_EQ(server.asked(), std::vector{volumeAt(0.5F)});
    answer(0);
    answerRead();
    mirror.sinks["spk"].mute = Mute::On;
    writer.set(speaker, {0.6F, Mute::Off});
    EXPECT_EQ(sentSoFar(), 3U) << "the volume and the mute";
    answer(1);
    answer(2);
    writer.set(speaker, {0.7F, Mute::Off});
    EXPECT_EQ(sentSoFar(), 5U) << "what the mirror says of a mute on its way is no guide";
}

TEST_F(VolumeWriterTest, UnmutesWhatTheMirrorDoesNotShowMutedYet) {
    writer.set(speaker, silence);
    answer(0);
    ASSERT_EQ(server.reads.size(), 1U) << "acknowledged, and not read yet";
    writer.set(speaker, {0.6F, Mute::Off});
    EXPECT_EQ(server.asked(), (std::vector{muted(Mute::On), volumeAt(0.6F), muted(Mute::Off)}));
}

TEST_F(VolumeWriterTest, SendsAValueThatReturnsToTheOneInFlight) {
    writer.set(speaker, to(0.8F));
    writer.set(speaker, to(0.3F));
    writer.set(speaker, to(0.8F));
    answer(0);
    EXPECT_EQ(server.asked(), (std::vector{volumeAt(0.8F), volumeAt(0.8F)}));
}

TEST_F(VolumeWriterTest, SendsAValueOnceThatIsSetAgainWhileItIsInFlight) {
    writer.set(speaker, to(0.8F));
    writer.set(speaker, to(0.8F));
    answer(0);
    EXPECT_EQ(sentSoFar(), 1U);
    EXPECT_EQ(server.reads.size(), 1U);
}

TEST_F(VolumeWriterTest, StaysPendingUntilTheServerWasAskedAgain) {
    writer.set(speaker, to(0.5F));
    answer(0);
    ASSERT_EQ(server.reads.size(), 1U);
    EXPECT_EQ(writer.pending(speaker), to(0.5F));
    EXPECT_EQ(confirmations, 0);
    answerRead();
    EXPECT_EQ(writer.pending(speaker), std::nullopt);
    EXPECT_EQ(confirmations, 1);
}

TEST_F(VolumeWriterTest, IgnoresAConfirmationThatANewerValueHasOvertaken) {
    writer.set(speaker, to(0.5F));
    answer(0);
    writer.set(speaker, to(0.6F));
    ASSERT_EQ(sentSoFar(), 2U);
    const auto late = server.reads.at(0);
    answerRead();
    EXPECT_EQ(writer.pending(speaker), to(0.6F));
    answer(1);
    late();
    EXPECT_EQ(writer.pending(speaker), to(0.6F));
    EXPECT_EQ(confirmations, 0);
    answerRead();
    EXPECT_EQ(writer.pending(speaker), std::nullopt);
    EXPECT_EQ(confirmations, 1);
}

TEST_F(VolumeWriterTest, KeepsObjectsApart) {
    mirror.restoreEntries.emplace();
    writer.set(speaker, to(0.5F));
    writer.set(event, to(0.6F));
    ASSERT_EQ(sentSoFar(), 2U);
    answer(0);
    answerRead();
    EXPECT_EQ(writer.pending(speaker), std::nullopt);
    EXPECT_EQ(writer.pending(event), to(0.6F));
}

TEST_F(VolumeWriterTest, IgnoresAnswersToWhatEndedWithTheConnection) {
    writer.set(speaker, to(0.5F));
    writer.end();
    EXPECT_EQ(writer.pending(speaker), std::nullopt);
    writer.set(speaker, to(0.5F));
    EXPECT_EQ(writer.pending(speaker), std::nullopt) << "nothing is kept for the next one";
    writer.begin(server);
    writer.set(speaker, to(0.6F));
    answer(0);
    EXPECT_TRUE(server.reads.empty());
    EXPECT_EQ(sentSoFar(), 2U);
    EXPECT_EQ(writer.pending(speaker), to(0.6F));
}

TEST_F(VolumeWriterTest, IgnoresAReadThatIsAnsweredTwice) {
    writer.set(speaker, to(0.5F));
    answer(0);
    const auto confirmed = server.reads.at(0);
    confirmed();
    confirmed();
    EXPECT_EQ(confirmations, 1);
    EXPECT_EQ(sentSoFar(), 1U);
}

TEST_F(VolumeWriterTest, SendsAValueAgainBehindItselfWhenItMustBe) {
    writer.set(speaker, to(0.8F));
    writer.set(speaker, to(0.8F), Repeat::Send);
    writer.set(speaker, to(0.8F), Repeat::Send);
    ASSERT_EQ(sentSoFar(), 1U);
    answer(0);
    ASSERT_EQ(sentSoFar(), 2U);
    answer(1);
    EXPECT_EQ(sentSoFar(), 2U);
}

TEST_F(VolumeWriterTest, IsIdleOnceEverythingIsConfirmed) {
    EXPECT_TRUE(writer.isIdle());
    writer.set(speaker, to(0.8F));
    answer(0);
    EXPECT_FALSE(writer.isIdle());
    answerRead();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(VolumeWriterTest, TakesAnAnswerFromInsideTheSending) {
    server.answersAtOnce = true;
    writer.set(speaker, {0.5F, Mute::On});
    EXPECT_EQ(sentSoFar(), 2U);
    EXPECT_EQ(server.reads.size(), 1U) << "asked once, after both";
    EXPECT_EQ(writer.pending(speaker), (Setting{0.5F, Mute::On}));
}

TEST_F(VolumeWriterTest, ReadsAnObjectThatConsistsOfNothing) {
    writer.set({VolumeObject::Kind::Conference, ""}, to(0.5F));
    EXPECT_EQ(sentSoFar(), 0U);
    EXPECT_FALSE(writer.isIdle());
    answerRead();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(VolumeWriterTest, ReportsTheFirstReasonOfARefusalAndReadsTheState) {
    writer.set(speaker, {0.5F, Mute::On});
    answer(0, PA_ERR_ACCESS);
    EXPECT_TRUE(refusals.empty());
    answer(1, PA_ERR_NOENTITY);
    EXPECT_EQ(refusals, std::vector<std::string>{"spk: Access denied"});
    answerRead();
    EXPECT_TRUE(writer.isIdle());
}

}  // namespace test
