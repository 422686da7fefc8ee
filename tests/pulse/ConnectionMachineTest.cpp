#include "backends/pulse/ConnectionMachine.hpp"

#include <gtest/gtest.h>

using namespace pulse;

TEST(ConnectionMachine, GoesFromAttemptToReadyToLostToRetrying) {
    ConnectionMachine machine;
    const auto first = machine.attempt();
    EXPECT_EQ(machine.state(), ConnectionState::Connecting);
    EXPECT_TRUE(machine.becameReady(first));
    EXPECT_EQ(machine.state(), ConnectionState::Ready);
    EXPECT_TRUE(machine.failed(first));
    EXPECT_EQ(machine.state(), ConnectionState::Lost);
    machine.waitForRetry();
    EXPECT_EQ(machine.state(), ConnectionState::Retrying);
    EXPECT_NE(machine.attempt(), first);
    EXPECT_EQ(machine.state(), ConnectionState::Connecting);
}

TEST(ConnectionMachine, IgnoresWhatAnEarlierAttemptStillSays) {
    ConnectionMachine machine;
    const auto first = machine.attempt();
    machine.failed(first);
    machine.waitForRetry();
    const auto second = machine.attempt();
    EXPECT_FALSE(machine.becameReady(first));
    EXPECT_FALSE(machine.failed(first));
    EXPECT_EQ(machine.state(), ConnectionState::Connecting);
    EXPECT_TRUE(machine.becameReady(second));
    EXPECT_FALSE(machine.failed(first));
    EXPECT_EQ(machine.state(), ConnectionState::Ready);
}

TEST(ConnectionMachine, TakesAFailureOnceAndNoReadinessAfterIt) {
    ConnectionMachine machine;
    const auto attempt = machine.attempt();
    EXPECT_TRUE(machine.failed(attempt));
    EXPECT_FALSE(machine.failed(attempt));
    EXPECT_FALSE(machine.becameReady(attempt));
    EXPECT_EQ(machine.state(), ConnectionState::Lost);
    machine.waitForRetry();
    EXPECT_FALSE(machine.failed(attempt));
    EXPECT_FALSE(machine.becameReady(attempt));
    EXPECT_EQ(machine.state(), ConnectionState::Retrying);
}

TEST(ConnectionMachine, DoublesTheWaitFromTenMillisecondsToTwoSeconds) {
    ConnectionMachine machine;
    for (const double expected : {0.01, 0.02, 0.04, 0.08, 0.16, 0.32, 0.64, 1.28, 2.0, 2.0}) {
        machine.failed(machine.attempt());
        EXPECT_DOUBLE_EQ(machine.waitForRetry(), expected);
    }
}

TEST(ConnectionMachine, AttemptsAtOnceWhenAServerAppearsWhileItWaits) {
    ConnectionMachine machine;
    for (int i = 0; i < 20; ++i) {
        machine.failed(machine.attempt());
        machine.waitForRetry();
    }
    EXPECT_TRUE(machine.serverAppeared());
    machine.failed(machine.attempt());
    EXPECT_DOUBLE_EQ(machine.waitForRetry(), 0.01);
}

TEST(ConnectionMachine, GoesOnWithAnAttemptOrAConnectionWhenAServerAppears) {
    ConnectionMachine machine;
    machine.failed(machine.attempt());
    machine.waitForRetry();
    const auto attempt = machine.attempt();
    EXPECT_FALSE(machine.serverAppeared());
    EXPECT_TRUE(machine.becameReady(attempt));
    EXPECT_FALSE(machine.serverAppeared());
    EXPECT_EQ(machine.state(), ConnectionState::Ready);
    machine.failed(attempt);
    EXPECT_FALSE(machine.serverAppeared());
}

TEST(ConnectionMachine, WaitsShortlyAgainAfterAConnection) {
    ConnectionMachine machine;
    for (int i = 0; i < 5; ++i) {
        machine.failed(machine.attempt());
        machine.waitForRetry();
    }
    const auto attempt = machine.attempt();
    machine.becameReady(attempt);
    machine.failed(attempt);
    EXPECT_DOUBLE_EQ(machine.waitForRetry(), 0.01);
}
