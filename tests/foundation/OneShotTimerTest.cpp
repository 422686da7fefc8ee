#include "platform/foundation/NSRunLoop.hpp"

#include <gtest/gtest.h>

#include <memory>

/// In virtual time.
class OneShotTimerTest : public testing::Test {
 protected:
    OneShotTimerTest() {
        NSRunLoop::mainRunLoop().setClock([this] { return now; });
    }
    ~OneShotTimerTest() override {
        advance(1000);
        NSRunLoop::mainRunLoop().setClock({});
    }
    void advance(double seconds) {
        now += seconds;
        NSRunLoop::mainRunLoop().runDue();
    }

    double now = 1;
    int calls = 0;
    std::unique_ptr<OneShotTimer> timer = std::make_unique<OneShotTimer>();
};

TEST_F(OneShotTimerTest, CallsOnceWhenItIsDue) {
    timer->start(2, [this] { ++calls; });
    EXPECT_TRUE(timer->isRunning());
    advance(1.99);
    EXPECT_EQ(calls, 0);
    advance(0.02);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(timer->isRunning());
    advance(10);
    EXPECT_EQ(calls, 1);
}

TEST_F(OneShotTimerTest, CallsOnlyTheLastThatWasStarted) {
    timer->start(1, [this] { calls += 10; });
    timer->start(2, [this] { ++calls; });
    advance(1.5);
    EXPECT_EQ(calls, 0);
    advance(1);
    EXPECT_EQ(calls, 1);
}

TEST_F(OneShotTimerTest, CallsNothingAfterItWasCancelledOrDestroyed) {
    timer->start(1, [this] { ++calls; });
    timer->cancel();
    advance(2);
    timer->start(1, [this] { ++calls; });
    timer.reset();
    advance(2);
    EXPECT_EQ(calls, 0);
}

TEST_F(OneShotTimerTest, MayBeStartedAgainOrDestroyedByItsCall) {
    timer->start(1, [this] {
        ++calls;
        timer->start(1, [this] {
            ++calls;
            timer.reset();
            ++calls;
        });
    });
    advance(1.1);
    EXPECT_EQ(calls, 1);
    advance(1.1);
    EXPECT_EQ(calls, 3);
}
