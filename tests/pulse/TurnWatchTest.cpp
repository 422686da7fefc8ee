#include "tests/rigs/TurnWatch.hpp"

#include <gtest/gtest.h>
#include <poll.h>

#include <ctime>

namespace {

constexpr double turnSeconds = 0.02;

double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

TEST(TurnWatch, KnowsNoTurnBeforeTheSecondCall) {
    rigs::TurnWatch turns;
    EXPECT_EQ(turns.longestSeconds(), 0);
    turns.turn();
    EXPECT_EQ(turns.longestSeconds(), 0);
}

TEST(TurnWatch, CountsWhatTheThreadRuns) {
    rigs::TurnWatch turns;
    turns.turn();
    const double end = processorSeconds() + turnSeconds;
    while (processorSeconds() < end) {
    }
    turns.turn();
    turns.turn();
    EXPECT_GE(turns.longestSeconds(), 0.95 * turnSeconds);
}

TEST(TurnWatch, CountsWhatTheThreadIsBlockedFor) {
    rigs::TurnWatch turns;
    turns.turn();
    poll(nullptr, 0, static_cast<int>(turnSeconds * 1000));
    turns.turn();
    turns.turn();
    EXPECT_GE(turns.longestSeconds(), 0.95 * turnSeconds);
}
