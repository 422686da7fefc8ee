#include "platform/foundation/NSDate.hpp"

#include <gtest/gtest.h>

#include <ctime>

namespace {

TEST(NSDate, CountsTheSecondsSinceTheBeginningOf2001) {
    constexpr double referenceDate = 978307200;  // Seconds since 1970.
    const double before = static_cast<double>(std::time(nullptr)) - referenceDate;
    const double now = NSDate::timeIntervalSinceReferenceDate();
    const double after = static_cast<double>(std::time(nullptr)) + 1 - referenceDate;
    EXPECT_GE(now, before - 1) << "the coarse clock may lag behind the fine one";
    EXPECT_LE(now, after + 1);
}

}  // namespace
