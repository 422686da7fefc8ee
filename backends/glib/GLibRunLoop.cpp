#include "backends/glib/GLibRunLoop.hpp"

#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>
#include <cmath>
#include <exception>

namespace glib {

namespace {

/// Milliseconds until the next call is due, and 0 when it is; -1 is for ever. Rounded up, so that
/// the call is due when the source wakes.
gint timeLeft() {
    const NSRunLoop& loop = NSRunLoop::mainRunLoop();
    const std::optional<double> due = loop.nextDue();
    if (!due) return -1;
    constexpr double millisecondsEach = 1000;
    constexpr double farthest = G_MAXINT;
    const double left = std::ceil((*due - loop.currentTime()) * millisecondsEach);
    return static_cast<gint>(std::clamp(left, 0.0, farthest));
}

// The context asks before each sleep. A time that is set on the source would wake it once more each
// time it is set.
gboolean prepare(GSource* /*source*/, gint* timeout) {
    *timeout = timeLeft();
    return *timeout == 0;
}

gboolean check(GSource* /*source*/) {
    return timeLeft() == 0;
}

/// Exceptions must not pass through GLib. The widget throws if its list lacks a bound row's
/// partner: that change is not shown, and everything else continues.
gboolean runDue(GSource* /*source*/, GSourceFunc /*callback*/, gpointer /*data*/) {
    try {
        NSRunLoop::mainRunLoop().runDue();
    } catch (const std::exception& error) {
        NSLog(std::string("a call from the main loop failed: ") + error.what());
    }
    return G_SOURCE_CONTINUE;
}

GSourceFuncs sourceFunctions = {prepare, check, runDue, nullptr, nullptr, nullptr};

}  // namespace

void GLibRunLoop::SourceEnd::operator()(GSource* source) const {
    g_source_destroy(source);
    g_source_unref(source);
}

GLibRunLoop::GLibRunLoop(GMainContext* context)
    : source_(g_source_new(&sourceFunctions, sizeof(GSource))) {
    g_source_set_static_name(source_.get(), "platform main loop");
    g_source_set_can_recurse(source_.get(), TRUE);
    g_source_attach(source_.get(), context);
}

}  // namespace glib
