#include "shells/headless/Waiter.hpp"

#include <glib-unix.h>

#include <algorithm>
#include <cmath>

namespace headless {
namespace {

/// A source of the default context that ends with this, whether or not it was dispatched.
class Source {
 public:
    explicit Source(GSource* source, GSourceFunc function, gpointer data) : source_(source) {
        g_source_set_callback(source_, function, data, nullptr);
        g_source_attach(source_, nullptr);
    }
    ~Source() {
        g_source_destroy(source_);
        g_source_unref(source_);
    }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

 private:
    GSource* source_;
};

gboolean wake(gpointer /*data*/) {
    return G_SOURCE_CONTINUE;
}

gboolean inputCame(gint /*input*/, GIOCondition /*condition*/, gpointer came) {
    *static_cast<bool*>(came) = true;
    return G_SOURCE_CONTINUE;
}

class GLibWaiter : public Waiter {
 public:
    Woken wait(int input, std::optional<double> seconds) override {
        bool hasInput = false;
        std::optional<Source> reading;
        std::optional<Source> timing;
        if (input >= 0)
            reading.emplace(g_unix_fd_source_new(input, G_IO_IN), G_SOURCE_FUNC(inputCame),
                            &hasInput);
        if (seconds) {
            const double bounded = std::clamp(*seconds, 0.0, longestWait);
            const auto interval = static_cast<guint>(std::ceil(bounded * millisecondsPerSecond));
            timing.emplace(g_timeout_source_new(interval), wake, nullptr);
        }
        g_main_context_iteration(nullptr, TRUE);
        return hasInput ? Woken::Input : Woken::Other;
    }
};

}  // namespace

std::unique_ptr<Waiter> makeGLibWaiter() {
    return std::make_unique<GLibWaiter>();
}

}  // namespace headless
