#include "tests/pulse/VolumeWriterFixture.hpp"

namespace test {

class VolumeWriterOnPipeWire : public VolumeWriterTest {
 protected:
    VolumeWriterOnPipeWire() { mirror.server.pipeWire = anyPipeWire; }

    /// Sends the volume and has it acknowledged.
    void write(pa_volume_t volume) {
        writer.set(speaker, to(static_cast<float>(volume) / PA_VOLUME_NORM));
        answer(sentSoFar() - 1);
    }
    void writeEntry(pa_volume_t volume) {
        writer.set(event, to(static_cast<float>(volume) / PA_VOLUME_NORM));
        answer(sentSoFar() - 1);
    }
    /// As write(), and nothing comes of it until that is given up.
    void writeUnheeded(pa_volume_t volume) {
        write(volume);
        giveUp();
    }
    void giveUp() {
        answerRead();
        advance(PendingWrite::longestSeconds + 0.001);
        answerRead();
    }
};

TEST_F(VolumeWriterOnPipeWire, HoldsTheReaderBeforeItSends) {
    writer.set(speaker, to(0.5F));
    ASSERT_EQ(server.held.size(), 1U);
    EXPECT_EQ(server.held[0], std::vector{Part::Sinks});
}

TEST_F(VolumeWriterOnPipeWire, SeesAVolumeTakenByAReadThatBeginsAfterTheAcknowledgement) {
    writer.set(speaker, to(200.0F / PA_VOLUME_NORM));
    EXPECT_TRUE(server.reads.empty());
    answer(0);
    mirrorHas(200);
    EXPECT_FALSE(writer.isIdle());
    answerRead();
    EXPECT_TRUE(writer.isIdle());
    EXPECT_TRUE(server.reads.empty()) << "one more read is a long one";
    EXPECT_EQ(confirmations, 1);
}

TEST_F(VolumeWriterOnPipeWire, ReadsAgainWhileNothingHasChanged) {
    write(200);
    for (int i = 0; i < 5; ++i) {
        answerRead();
        EXPECT_TRUE(server.reads.empty()) << "read again without a pause";
        advance(PendingWrite::retrySeconds);
    }
    EXPECT_FALSE(writer.isIdle());
    mirrorHas(200);
    answerRead();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(VolumeWriterOnPipeWire, TakesAnyOtherVolumeForTheDevicesRounding) {
    write(200);
    writer.set(speaker, to(0.5F));
    mirrorHas(190);
    answerRead();
    EXPECT_EQ(sentSoFar(), 2U);
}

TEST_F(VolumeWriterOnPipeWire, SeesAMuteTakenByTheMuteAlone) {
    writer.set(speaker, silence);
    answer(0);
    mirrorHas(200);  // Somebody else's volume.
    answerRead();
    EXPECT_FALSE(writer.isIdle());
    advance(PendingWrite::retrySeconds);
    mirror.sinks["spk"].mute = Mute::On;
    answerRead();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(VolumeWriterOnPipeWire, DoesNotWaitWhereThatVolumeWasBefore) {
    write(100);
    answerRead();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(VolumeWriterOnPipeWire, DoesNotWaitLongWhereNothingMoves) {
    write(200);
    advance(PendingWrite::longestSeconds - 0.001);
    answerRead();
    advance(0);
    EXPECT_EQ(sentSoFar(), 1U);
    advance(0.0011);
    answerRead();
    EXPECT_EQ(sentSoFar(), 2U) << "unheeded, and sent again";
}

TEST_F(VolumeWriterOnPipeWire, SeesAVolumeTakenHoweverLateThatIsRead) {
    write(200);
    advance(10 * PendingWrite::longestSeconds);
    mirrorHas(200);
    answerRead();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(VolumeWriterOnPipeWire, DoesNotMissWhatAReadThatBeganEarlyAndTookLongDoesNotShow) {
    write(200);
    advance(10 * PendingWrite::longestSeconds);
    answerRead();
    EXPECT_EQ(sentSoFar(), 1U) << "hundreds of streams take long to read";
    advance(PendingWrite::retrySeconds);
    mirrorHas(200);
    answerRead();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(VolumeWriterOnPipeWire, DoesNotWaitForWhatIsGone) {
    write(200);
    mirror.sinks.clear();
    answerRead();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(VolumeWriterOnPipeWire, WaitsUntilTheVolumeOfARoleIsKept) {
    entryHas(4000);
    writeEntry(2000);
    answerRead();  // Nothing written to an entry is dropped: the next one might follow already.
    EXPECT_FALSE(writer.isIdle());
    entryHas(3000);  // An earlier one of ours, which was on its way.
    answerRead();
    EXPECT_FALSE(writer.isIdle());
    entryHas(2001);  // As its decimals come out.
    advance(PendingWrite::retrySeconds);
    answerRead();
    EXPECT_TRUE(writer.isIdle());
    EXPECT_TRUE(refusals.empty());
    EXPECT_LT(now, 1.01) << "a fixed wait";
}

TEST_F(VolumeWriterOnPipeWire, SendsTheNextVolumeOfARoleBeforeTheOneBeforeIsKept) {
    entryHas(4000);
    writeEntry(2000);
    writer.set(event, to(0.5F));
    answerRead();
    EXPECT_EQ(sentSoFar(), 2U);
}

TEST_F(VolumeWriterOnPipeWire, TakesARoleThatASessionManagerDoesNotKeepForRefused) {
    entryHas(40000);
    writeEntry(20000);
    answerRead();
    advance(PendingWrite::longestKeepingSeconds - 0.001);
    answerRead();
    EXPECT_FALSE(writer.isIdle());
    EXPECT_TRUE(refusals.empty());
    advance(0.0011);
    answerRead();
    EXPECT_TRUE(writer.isIdle());
    EXPECT_EQ(refusals, std::vector<std::string>{"event: the server has not kept it"});
    EXPECT_EQ(sentSoFar(), 1U);
}

TEST_F(VolumeWriterOnPipeWire, AwaitsTheSecondValueAloneOnceItIsSent) {
    write(200);
    writer.set(speaker, to(300.0F / PA_VOLUME_NORM));
    const auto late = server.reads.at(0);
    mirrorHas(200);
    answerRead();
    ASSERT_EQ(sentSoFar(), 2U);
    answer(1);
    answerRead();
    EXPECT_FALSE(writer.isIdle()) << "what it shows is the first value";
    mirrorHas(300);
    advance(PendingWrite::retrySeconds);
    answerRead();
    EXPECT_TRUE(writer.isIdle());
    late();
    advance(1);
    EXPECT_TRUE(server.reads.empty());
    EXPECT_EQ(confirmations, 1);
}

TEST_F(VolumeWriterOnPipeWire, ForgetsWhatItAwaitsWithTheConnection) {
    write(200);
    writer.end();
    mirrorHas(200);
    answerRead();
    EXPECT_EQ(confirmations, 0);
    writer.begin(server);
    write(300);
    answerRead();
    writer.end();
    advance(1);
    EXPECT_TRUE(server.reads.empty());
    EXPECT_EQ(confirmations, 0);
}

TEST_F(VolumeWriterOnPipeWire, SendsAValueThatMovedNothingASecondTimeButNotAThird) {
    writeUnheeded(52429);
    ASSERT_EQ(sentSoFar(), 2U);
    EXPECT_EQ(server.calls[1].asked, server.calls[0].asked);
    writer.set(speaker, to(52429.0F / PA_VOLUME_NORM));
    answer(1);
    giveUp();
    EXPECT_EQ(sentSoFar(), 2U);
    EXPECT_FALSE(writer.isIdle()) << "somebody is told what is there instead";
    answerRead();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(VolumeWriterOnPipeWire, SendsTheNewerValueInsteadOfOneThatMovedNothing) {
    writer.set(speaker, to(0.8F));
    writer.set(speaker, to(0.3F));
    answer(0);
    giveUp();
    ASSERT_EQ(sentSoFar(), 2U);
    EXPECT_EQ(server.calls[1].asked, volumeAt(0.3F));
    answer(1);
    giveUp();
    ASSERT_EQ(sentSoFar(), 3U) << "a value that was sent once only";
    EXPECT_EQ(server.calls[2].asked, volumeAt(0.3F));
    writer.set(speaker, to(0.4F));
    answer(2);
    mirrorHas(rawFromFraction(0.3F));
    answerRead();
    ASSERT_EQ(sentSoFar(), 4U);
    EXPECT_EQ(server.calls[3].asked, volumeAt(0.4F));
}

TEST_F(VolumeWriterOnPipeWire, WakesASuspendedSinkOfNoCardBeforeItSendsAgain) {
    mirror.sinks["spk"].isSuspended = true;
    mirror.sinks["spk"].isOfCard = false;
    writeUnheeded(200);
    EXPECT_EQ(server.woken, std::vector<std::string>{"spk"});
    EXPECT_EQ(sentSoFar(), 1U);
    server.wakeEnded();
    EXPECT_EQ(sentSoFar(), 1U) << "what it shows is read first";
    answerRead();
    EXPECT_EQ(sentSoFar(), 2U);
}

TEST_F(VolumeWriterOnPipeWire, ForgetsASinkThatItWakesWithTheConnection) {
    mirror.sinks["spk"].isSuspended = true;
    mirror.sinks["spk"].isOfCard = false;
    writeUnheeded(200);
    writer.end();
    server.wakeEnded();
    EXPECT_TRUE(server.reads.empty());
}

TEST_F(VolumeWriterOnPipeWire, DoesNotAwaitWhatWasRefused) {
    writer.set(speaker, to(0.5F));
    answer(0, PA_ERR_ACCESS);
    EXPECT_EQ(refusals, std::vector<std::string>{"spk: Access denied"});
    answerRead();
    EXPECT_TRUE(writer.isIdle());
    EXPECT_EQ(sentSoFar(), 1U);
}

}  // namespace test
