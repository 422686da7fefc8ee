#include "tests/desktop/MainLoop.hpp"

#include <glib.h>

namespace test {

bool waitUntil(const std::function<bool()>& condition) {
    constexpr guint longestWait = 10000;  // milliseconds
    bool expired = false;
    const auto expire = +[](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_REMOVE;
    };
    const guint timer = g_timeout_add(longestWait, expire, &expired);
    while (!condition() && !expired)
        g_main_context_iteration(nullptr, TRUE);
    if (!expired) g_source_remove(timer);
    return !expired;
}

}  // namespace test
