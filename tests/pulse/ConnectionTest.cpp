#include "backends/pulse/connection/Connection.hpp"

#include <gtest/gtest.h>

using namespace pulse;

TEST(ConnectionMachine, GoesFromAttemptToReadyToLostToRetrying) {
    ConnectionMachine machine;
    machine.attempt();
    EXPECT_EQ(machine.state(), ConnectionState::Connecting);
    EXPECT_TRUE(machine.becameReady());
    EXPECT_EQ(machine.state(), ConnectionState::Ready);
    EXPECT_TRUE(machine.failed());
    EXPECT_EQ(machine.state(), ConnectionState::Lost);
    machine.waitForRetry();
    EXPECT_EQ(machine.state(), ConnectionState::Retrying);
    machine.attempt();
    EXPECT_EQ(machine.state(), ConnectionState::Connecting);
}

TEST(ConnectionMachine, TakesAFailureOnceAndNoReadinessAfterIt) {
    ConnectionMachine machine;
    machine.attempt();
    EXPECT_TRUE(machine.failed());
    EXPECT_FALSE(machine.failed());
    EXPECT_FALSE(machine.becameReady());
    EXPECT_EQ(machine.state(), ConnectionState::Lost);
    machine.waitForRetry();
    EXPECT_FALSE(machine.failed());
    EXPECT_FALSE(machine.becameReady());
    EXPECT_EQ(machine.state(), ConnectionState::Retrying);
}

TEST(ConnectionMachine, DoublesTheWaitFromTenMillisecondsToTwoSeconds) {
    ConnectionMachine machine;
    for (const double expected : {0.01, 0.02, 0.04, 0.08, 0.16, 0.32, 0.64, 1.28, 2.0, 2.0}) {
        machine.attempt();
        machine.failed();
        EXPECT_DOUBLE_EQ(machine.waitForRetry(), expected);
    }
}

TEST(ConnectionMachine, AttemptsAtOnceWhenAServerAppearsWhileItWaits) {
    ConnectionMachine machine;
    for (int i = 0; i < 20; ++i) {
        machine.attempt();
        machine.failed();
        machine.waitForRetry();
    }
    EXPECT_TRUE(machine.serverAppeared());
    machine.attempt();
    machine.failed();
    EXPECT_DOUBLE_EQ(machine.waitForRetry(), 0.01);
}

TEST(ConnectionMachine, GoesOnWithAnAttemptOrAConnectionWhenAServerAppears) {
    ConnectionMachine machine;
    machine.attempt();
    machine.failed();
    machine.waitForRetry();
    machine.attempt();
    EXPECT_FALSE(machine.serverAppeared());
    EXPECT_TRUE(machine.becameReady());
    EXPECT_FALSE(machine.serverAppeared());
    EXPECT_EQ(machine.state(), ConnectionState::Ready);
    machine.failed();
    EXPECT_FALSE(machine.serverAppeared());
}

TEST(ConnectionMachine, WaitsShortlyAgainAfterAConnection) {
    ConnectionMachine machine;
    for (int i = 0; i < 5; ++i) {
        machine.attempt();
        machine.failed();
        machine.waitForRetry();
    }
    machine.attempt();
    machine.becameReady();
    machine.failed();
    EXPECT_DOUBLE_EQ(machine.waitForRetry(), 0.01);
}
