#include "backends/pulse/connection/Connection.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <map>

using namespace pulse;

class ServerSocketTest : public testing::Test {
 protected:
    static constexpr std::array variables = {"PULSE_SERVER", "PULSE_RUNTIME_PATH",
                                             "XDG_RUNTIME_DIR"};
    ServerSocketTest() {
        for (const char* name : variables) {
            if (const char* value = std::getenv(name)) before[name] = value;
            unsetenv(name);
        }
    }
    ~ServerSocketTest() override {
        for (const char* name : variables)
            before.contains(name) ? setenv(name, before[name].c_str(), 1) : unsetenv(name);
    }
    std::map<std::string, std::string> before;
};

TEST_F(ServerSocketTest, IsThatOfTheAddress) {
    EXPECT_EQ(serverSocket("unix:/run/x"), "/run/x");
    EXPECT_EQ(serverSocket("/run/x"), "/run/x");
    EXPECT_EQ(serverSocket("{0123}unix:/run/x"), "/run/x");
    EXPECT_EQ(serverSocket("tcp:other  unix:/run/x unix:/run/y"), "/run/x");
}

TEST_F(ServerSocketTest, IsNoneForOtherMachinesAndNonsense) {
    for (const char* address : {"", " ", "tcp:host", "host", "unix:", "unix:relative", "{", "{}"})
        EXPECT_EQ(serverSocket(address), std::nullopt) << address;
}

TEST_F(ServerSocketTest, IsThatOfTheEnvironmentWithoutAnAddress) {
    EXPECT_EQ(serverSocket(std::nullopt), std::nullopt);
    setenv("XDG_RUNTIME_DIR", "/run/user/1", 1);
    EXPECT_EQ(serverSocket(std::nullopt), "/run/user/1/pulse/native");
    setenv("PULSE_RUNTIME_PATH", "/run/p", 1);
    EXPECT_EQ(serverSocket(std::nullopt), "/run/p/native");
    setenv("PULSE_SERVER", "unix:/run/s", 1);
    EXPECT_EQ(serverSocket(std::nullopt), "/run/s");
    setenv("PULSE_SERVER", "tcp:host", 1);
    EXPECT_EQ(serverSocket(std::nullopt), std::nullopt);
    setenv("PULSE_SERVER", "", 1);
    EXPECT_EQ(serverSocket(std::nullopt), "/run/p/native");
}
