#include "platform/foundation/NSRunLoop.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

namespace {

class RunLoop : public testing::Test {
 protected:
    RunLoop() {
        loop.setClock([this] { return now; });
    }
    void noteAfter(double seconds, int number) {
        loop.performAfterDelay(seconds, [this, number] { notes.push_back(number); });
    }

    NSRunLoop loop;
    double now = 100;  // Seconds.
    std::vector<int> notes;
};

TEST_F(RunLoop, CallsNothingBeforeItsTime) {
    noteAfter(1, 1);
    EXPECT_FALSE(loop.runDue());
    now = std::nextafter(101.0, 0);
    EXPECT_FALSE(loop.runDue());
    now = 101;
    EXPECT_TRUE(loop.runDue());
    EXPECT_EQ(notes, (std::vector{1}));
    EXPECT_FALSE(loop.runDue());
}

TEST_F(RunLoop, NeverCallsFromInsideTheRequest) {
    noteAfter(0, 1);
    EXPECT_TRUE(notes.empty());
    loop.runDue();
    EXPECT_EQ(notes, (std::vector{1}));
}

TEST_F(RunLoop, CallsInTheOrderOfTimeAndThenOfRequest) {
    noteAfter(2, 3);
    noteAfter(1, 1);
    noteAfter(2, 4);
    noteAfter(1, 2);
    now = 110;
    loop.runDue();
    EXPECT_EQ(notes, (std::vector{1, 2, 3, 4}));
}

TEST_F(RunLoop, TakesANegativeDelayOrNoNumberAsNoDelay) {
    noteAfter(0, 1);
    noteAfter(-5, 2);
    noteAfter(std::nan(""), 3);
    noteAfter(-std::numeric_limits<double>::infinity(), 4);
    EXPECT_EQ(loop.nextDue(), 100.0);
    loop.runDue();
    EXPECT_EQ(notes, (std::vector{1, 2, 3, 4}));
}

TEST_F(RunLoop, NeverComesToAnEndlessDelay) {
    noteAfter(std::numeric_limits<double>::infinity(), 1);
    now = 1e300;
    EXPECT_FALSE(loop.runDue());
}

TEST_F(RunLoop, CallsWhatBecomesDueByItsCallsInTheSameRun) {
    loop.performAfterDelay(0, [this] {
        notes.push_back(1);
        noteAfter(0, 2);
        noteAfter(1, 9);
        loop.performAfterDelay(0, [this] { noteAfter(0, 3); });
    });
    loop.runDue();
    EXPECT_EQ(notes, (std::vector{1, 2, 3}));
    EXPECT_EQ(loop.nextDue(), 101.0);
}

TEST_F(RunLoop, GoesByTheClockAsItStandsAfterEachCall) {
    loop.performAfterDelay(0, [this] { now = 105; });
    noteAfter(3, 1);
    loop.runDue();
    EXPECT_EQ(notes, (std::vector{1}));
}

TEST_F(RunLoop, LetsAnExceptionOutAndKeepsWhatIsLeft) {
    loop.performAfterDelay(0, [] { throw std::out_of_range("row"); });
    noteAfter(0, 1);
    EXPECT_THROW(loop.runDue(), std::out_of_range);
    EXPECT_TRUE(notes.empty());
    EXPECT_TRUE(loop.runDue());
    EXPECT_EQ(notes, (std::vector{1}));
}

TEST_F(RunLoop, CanBeRunFromInsideACall) {
    loop.performAfterDelay(0, [this] {
        EXPECT_TRUE(loop.runDue());
        notes.push_back(2);
    });
    noteAfter(0, 1);
    loop.runDue();
    EXPECT_EQ(notes, (std::vector{1, 2}));
}

TEST_F(RunLoop, IgnoresAnEmptyFunction) {
    loop.performAfterDelay(0, nullptr);
    EXPECT_EQ(loop.nextDue(), std::nullopt);
    EXPECT_FALSE(loop.runDue());
}

TEST_F(RunLoop, TellsWhenItIsDueNext) {
    EXPECT_EQ(loop.nextDue(), std::nullopt);
    noteAfter(5, 1);
    EXPECT_EQ(loop.nextDue(), 105.0);
    noteAfter(2, 2);
    EXPECT_EQ(loop.nextDue(), 102.0);
    now = 102;
    loop.runDue();
    EXPECT_EQ(loop.nextDue(), 105.0);
}

TEST_F(RunLoop, ForgetsACallThatIsWithdrawn) {
    const NSRunLoop::Call withdrawn = loop.performAfterDelay(1, [this] { notes.push_back(1); });
    noteAfter(1, 2);
    noteAfter(3, 3);
    loop.withdraw(withdrawn);
    loop.withdraw(withdrawn);
    EXPECT_EQ(loop.nextDue(), 101.0) << "another call at the same time stays";
    now = 110;
    loop.runDue();
    EXPECT_EQ(notes, (std::vector{2, 3}));
}

TEST_F(RunLoop, HasNothingToWakeForWhenItsOnlyCallIsWithdrawn) {
    loop.withdraw(loop.performAfterDelay(1, [this] { notes.push_back(1); }));
    EXPECT_EQ(loop.nextDue(), std::nullopt);
}

TEST_F(RunLoop, LeavesTheOthersAloneWhenACallThatHasComeIsWithdrawn) {
    const NSRunLoop::Call call = loop.performAfterDelay(0, [] {});
    loop.runDue();
    noteAfter(0, 1);
    loop.withdraw(call);
    loop.withdraw({});
    loop.runDue();
    EXPECT_EQ(notes, (std::vector{1}));
}

TEST_F(RunLoop, LetsACallWithdrawTheNext) {
    NSRunLoop::Call next;
    loop.performAfterDelay(0, [&] { loop.withdraw(next); });
    next = loop.performAfterDelay(0, [this] { notes.push_back(1); });
    loop.runDue();
    EXPECT_TRUE(notes.empty());
}

TEST(MainRunLoop, HasAClockThatDoesNotGoBack) {
    const NSRunLoop loop;
    const double before = loop.currentTime();
    EXPECT_GE(loop.currentTime(), before);
    EXPECT_EQ(&NSRunLoop::mainRunLoop(), &NSRunLoop::mainRunLoop());
}

TEST(MainRunLoop, ReturnsToTheSystemsClock) {
    NSRunLoop loop;
    const double before = loop.currentTime();
    loop.setClock([] { return -5.0; });
    EXPECT_EQ(loop.currentTime(), -5.0);
    loop.setClock(nullptr);
    EXPECT_GE(loop.currentTime(), before);
}

}  // namespace
