#pragma once

#include "backends/pulse/ConnectionMachine.hpp"
#include "backends/pulse/FileWatch.hpp"
#include "backends/pulse/PulseContext.hpp"
#include "platform/foundation/OneShotTimer.hpp"

#include <pulse/glib-mainloop.h>

#include <functional>
#include <memory>
#include <optional>

namespace pulse {

/// Connects to the server and connects anew whenever that fails or ends, for as long as it lives:
/// after a wait, and at once when a local server's socket appears.
/// Runs on GLib's default main context and the main run loop.
class Connection {
 public:
    struct Handlers {
        std::function<void(PulseContext&)> ready;
        /// An attempt or a connection failed; its context lives until this returns. From the main
        /// run loop.
        std::function<void()> lost;
        std::function<void(Part)> changed;
    };

    /// Begins at once, without calling a handler from inside.
    Connection(NSString server, Handlers handlers);

    /// nullptr unless the server answers.
    PulseContext* context();
    /// Why there is no connection, for people; nil while it is being attempted, and after a server
    /// that took the connection has said nothing in time: it may only be slow.
    const NSString& refusal() const { return refusal_; }

 private:
    struct LoopDeleter {
        void operator()(pa_glib_mainloop* loop) const { pa_glib_mainloop_free(loop); }
    };

    void attempt();
    void becameReady(std::uint64_t generation);
    void failed(std::uint64_t generation, const NSString& refusal);
    std::string reason() const;
    void watchForServer();
    void serverAppeared();

    NSString server_;
    Handlers handlers_;
    ConnectionMachine machine_;
    NSString refusal_;
    std::optional<FileWatch> socketWatch_;  // While there is no connection.
    OneShotTimer timer_;  // While connecting its deadline, while retrying the wait.
    std::unique_ptr<pa_glib_mainloop, LoopDeleter> loop_;
    std::unique_ptr<PulseContext> context_;
};

}  // namespace pulse
