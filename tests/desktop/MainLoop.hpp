#pragma once

#include <functional>

namespace test {

/// Runs the main loop until the condition holds; false when it does not within ten seconds. The
/// condition is looked at after each thing that happens in the loop.
bool waitUntil(const std::function<bool()>& condition);

}  // namespace test
