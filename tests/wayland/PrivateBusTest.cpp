#include "tests/wayland/PrivateBus.hpp"

#include <gtest/gtest.h>

namespace test {
namespace {

std::string namesOn(const PrivateBus& bus, const char* method) {
    return rigs::outputOf({"gdbus", "call", "--address", bus.address(), "--dest",
                           "org.freedesktop.DBus", "--object-path", "/org/freedesktop/DBus",
                           "--method", std::string("org.freedesktop.DBus.") + method},
                          {});
}

TEST(PrivateBus, TakesConnectionsAndStartsNoServices) {
    rigs::ServerFolder folder;
    const PrivateBus bus(folder);
    EXPECT_NE(namesOn(bus, "ListNames").find("':1."), std::string::npos);
    EXPECT_EQ(namesOn(bus, "ListActivatableNames"), "(['org.freedesktop.DBus'],)\n");
}

TEST(PrivateBus, LeavesNothingBehind) {
    rigs::ServerFolder folder;
    { const PrivateBus bus(folder); }
    EXPECT_EQ(folder.programs(), 0);
}

}  // namespace
}  // namespace test
