#include "platform/foundation/NSDate.hpp"

#include <chrono>

double NSDate::timeIntervalSinceReferenceDate() {
    using namespace std::chrono;
    constexpr sys_days reference = year(2001) / January / 1;
    return duration<double>(system_clock::now() - reference).count();
}
