#include "tests/rigs/Waiting.hpp"

#include <glib.h>

#include <algorithm>

namespace rigs {

bool waitUntil(const std::function<bool()>& condition, double seconds) {
    const gint64 end = g_get_monotonic_time() + static_cast<gint64>(seconds * G_USEC_PER_SEC);
    // Wakes the loop now and then, for conditions that no event of the loop announces.
    constexpr guint wakeMilliseconds = 1;
    const guint waker = g_timeout_add(
        wakeMilliseconds, [](gpointer) { return gboolean{TRUE}; }, nullptr);
    bool holds = false;
    for (;;) {
        const gint64 asked = g_get_monotonic_time();
        holds = condition();
        const gint64 answered = g_get_monotonic_time();
        if (holds || answered >= end) break;
        // A condition that asks a program blocks the loop meanwhile: the loop gets as much time.
        const gint64 again = std::min(2 * answered - asked, end);
        do
            g_main_context_iteration(nullptr, TRUE);
        while (g_get_monotonic_time() < again);
    }
    g_source_remove(waker);
    return holds;
}

void runFor(double seconds) {
    waitUntil([] { return false; }, seconds);
}

}  // namespace rigs
