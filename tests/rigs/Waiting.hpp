#pragma once

#include <functional>

namespace rigs {

/// Long enough for a busy machine under a sanitizer; only what is broken takes so long.
inline constexpr double patienceSeconds = 20;

/// Runs GLib's default main loop until the condition holds; false when it doesn't in time.
bool waitUntil(const std::function<bool()>& condition, double seconds = patienceSeconds);
/// Runs the loop for that long, for what must not happen.
void runFor(double seconds);

}  // namespace rigs
