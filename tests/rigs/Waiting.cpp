#include "tests/rigs/Waiting.hpp"

#include <glib.h>

namespace rigs {

bool waitUntil(const std::function<bool()>& condition, double seconds) {
    const gint64 end = g_get_monotonic_time() + static_cast<gint64>(seconds * G_USEC_PER_SEC);
    // Wakes the loop now and then, for conditions that no event of the loop announces.
    constexpr guint wakeMilliseconds = 1;
    const guint waker = g_timeout_add(
        wakeMilliseconds, [](gpointer) { return gboolean{TRUE}; }, nullptr);
    bool holds = condition();
    while (!holds && g_get_monotonic_time() < end) {
        g_main_context_iteration(nullptr, TRUE);
        holds = condition();
    }
    g_source_remove(waker);
    return holds;
}

void runFor(double seconds) {
    waitUntil([] { return false; }, seconds);
}

}  // namespace rigs
