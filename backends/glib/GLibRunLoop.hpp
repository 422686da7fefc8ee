#pragma once

#include <glib.h>

#include <memory>

/// Drives the platform's main loop from a GLib main context: what the platform wants done later
/// wakes the context in time, and nothing wakes it otherwise. What throws is logged, and the rest
/// goes on. One for the program, on the main thread, for as long as its loop runs.
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
