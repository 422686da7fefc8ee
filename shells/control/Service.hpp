#pragma once

#include "backends/glib/GLibRunLoop.hpp"
#include "platform/celestial/SoundServer.hpp"

#include <functional>
#include <memory>

namespace control {

/// The sound server's volumes, with the loop that waits for them.
class Service {
 public:
    /// Starts connecting. `server` is an address for libpulse; nil for the default.
    explicit Service(const NSString& server);

    SoundServer& volumes() { return *volumes_; }
    /// Waits for the server; false if none answers. A server that accepts the connection has
    /// `timeout` seconds to answer, and one that does not exist has `patience` seconds to appear.
    bool waitUntilReady(double timeout, double patience);
    /// Waits for the server to confirm what was set; false if it has not within that many seconds.
    bool waitUntilWritten(double seconds);
    /// Runs the loop until the condition holds; false if it does not within that many seconds.
    static bool waitUntil(const std::function<bool()>& condition, double seconds);
    /// The server's reason for refusing a change, in its words; nil if it did not.
    const NSString& refusal() const { return refusal_; }

 private:
    glib::GLibRunLoop runLoop_;
    std::shared_ptr<SoundServer> volumes_;
    NSString refusal_;
};

}  // namespace control
