#pragma once

#include "platform/foundation/OneShotTimer.hpp"

#include <pulse/context.h>
#include <pulse/stream.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace pulse {

/// Has sinks run for a moment, unheard. On PipeWire from 1.4 on, one of no card that has never run
/// takes volumes and mutes, and goes on reporting 100 % and unmuted until something plays or its
/// monitor is recorded for the first time; what it reports then stays true when it is suspended
/// again. A wake takes a few tens of milliseconds.
class SinkWaker {
 public:
    /// A sink that cannot be woken, by a client without rights or because it is gone, is waited for
    /// no longer than this.
    static constexpr double longestSeconds = 0.5;

    /// Records the sink's monitor until the first sound of it comes. Then `ended` is called once,
    /// also where that fails; never from inside. A wake of the same sink that is under way is
    /// dropped. `context` outlives the wake, or clear() ends it before.
    void wake(pa_context* context, const std::string& sink, std::function<void()> ended);
    /// Drops what is under way: nothing is called any more.
    void clear() { wakes_.clear(); }

 private:
    struct StreamDeleter {
        void operator()(pa_stream* stream) const;
    };
    /// The user data of its stream's callbacks.
    struct Wake {
        std::function<void()> finish;
        OneShotTimer end;
        std::unique_ptr<pa_stream, StreamDeleter> stream;
    };

    static void record(Wake& wake, pa_context* context, const std::string& monitor);

    std::map<std::string, Wake> wakes_;  // By the sink's name.
};

}  // namespace pulse
