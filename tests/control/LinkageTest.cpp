#include "tests/processes/RunningProgram.hpp"

#include <gtest/gtest.h>

namespace test {
namespace {

// Everything that it loads, and what that loads in turn.
TEST(ControlProgram, LoadsNeitherAToolkitNorAPaintersLibrary) {
    const Ended ended = runToEnd({"ldd", TARNWICKCTL});
    ASSERT_EQ(ended.status, 0) << ended.complaints;
    EXPECT_NE(ended.output.find("libpulse"), std::string::npos) << ended.output;
    for (const char* library : {"libgdk", "libgtk", "libcairo", "libpango", "libatk", "libwayland"})
        EXPECT_EQ(ended.output.find(library), std::string::npos) << library << "\n" << ended.output;
}

}  // namespace
}  // namespace test
