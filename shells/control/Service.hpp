#pragma once

#include "backends/glib/GLibRunLoop.hpp"
#include "backends/pulse/PulseAudioController.hpp"

#include <functional>
#include <memory>

namespace control {

/// The sound server's volumes, and the loop on which they are waited for.
class Service {
 public:
    /// Begins to connect. `server` is an address as libpulse takes it; nil: where it finds one.
    explicit Service(const NSString& server);

    PulseAudioController& volumes() { return *volumes_; }
    /// False when no server answers. One that is there has `timeout` seconds for it; one that is
    /// not is waited for `patience` seconds, 0 for none.
    bool waitUntilReady(double timeout, double patience);
    /// False when the server has not answered what was set within that many seconds.
    bool waitUntilWritten(double seconds);
    /// Why the server did not change what was set, in its words; nil where it did.
    const NSString& refusal() const { return refusal_; }

 private:
    static bool waitUntil(const std::function<bool()>& condition, double seconds);

    GLibRunLoop runLoop_;
    std::shared_ptr<PulseAudioController> volumes_;
    NSString refusal_;
};

}  // namespace control
