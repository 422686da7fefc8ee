#pragma once

#include <glib.h>

#include <memory>

namespace glib {

/// Drives the platform's main loop from a GLib main context: scheduled calls wake the context in
/// time, and nothing else does. Exceptions are logged and everything continues. Create one in the
/// main thread, for as long as its loop runs:
///
///     glib::GLibRunLoop runLoop;
///     g_main_loop_run(loop);
class GLibRunLoop {
 public:
    /// nullptr is the default context.
    explicit GLibRunLoop(GMainContext* context = nullptr);
    GLibRunLoop(const GLibRunLoop&) = delete;
    GLibRunLoop& operator=(const GLibRunLoop&) = delete;

 private:
    struct SourceEnd {
        void operator()(GSource* source) const;
    };
    std::unique_ptr<GSource, SourceEnd> source_;
};

}  // namespace glib
