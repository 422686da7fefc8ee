#pragma once

#include "tests/rigs/Waiting.hpp"

#include <functional>

namespace test {

using rigs::patienceSeconds;

/// Runs the main loop until the condition holds; false when it does not in time. The condition is
/// looked at after each thing that happens in the loop, which is not woken for it.
bool waitUntil(const std::function<bool()>& condition);

}  // namespace test
