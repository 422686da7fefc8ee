#include "backends/glib/GLibRunLoop.hpp"

#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>
#include <cmath>
#include <exception>

namespace {

/// On GLib's clock; -1, which is never, when nothing is waiting. Rounded up, so that the call is
/// due when the source wakes.
gint64 readyTime() {
    const NSRunLoop& loop = NSRunLoop::mainRunLoop();
    const std::optional<double> due = loop.nextDue();
    if (!due) return -1;
    const double microseconds = std::ceil((*due - loop.currentTime()) * G_USEC_PER_SEC);
    // A year: farther away than any program runs, and within the clock's range.
    constexpr double farthest = 365.0 * 24 * 3600 * G_USEC_PER_SEC;
    return g_get_monotonic_time() + static_cast<gint64>(std::clamp(microseconds, 0.0, farthest));
}

/// No exception may pass through the library. The widget lets one out, for a list that lacks a
/// bound row's partner: that change is not shown, and everything else goes on.
gboolean runDue(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    try {
        NSRunLoop::mainRunLoop().runDue();
    } catch (const std::exception& error) {
        NSLog(std::string("a call from the main loop failed: ") + error.what());
    }
    g_source_set_ready_time(source, readyTime());
    return G_SOURCE_CONTINUE;
}

GSourceFuncs sourceFunctions = {nullptr, nullptr, runDue, nullptr, nullptr, nullptr};

}  // namespace

void GLibRunLoop::SourceEnd::operator()(GSource* source) const {
    g_source_destroy(source);
    g_source_unref(source);
}

GLibRunLoop::GLibRunLoop(GMainContext* context)
    : source_(g_source_new(&sourceFunctions, sizeof(GSource))) {
    g_source_set_static_name(source_.get(), "platform main loop");
    g_source_set_can_recurse(source_.get(), TRUE);
    g_source_set_ready_time(source_.get(), readyTime());
    g_source_attach(source_.get(), context);
    NSRunLoop::mainRunLoop().setWakeHandler(
        [source = source_.get()] { g_source_set_ready_time(source, readyTime()); });
}

GLibRunLoop::~GLibRunLoop() {
    NSRunLoop::mainRunLoop().setWakeHandler({});
}
