#pragma once

#include "backends/glib/FileWatch.hpp"
#include "backends/pulse/connection/PulseContext.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/foundation/NSString.hpp"

#include <pulse/glib-mainloop.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace pulse {

enum class ConnectionState {
    Connecting,  ///< An attempt is under way.
    Ready,       ///< The server answers.
    Lost,        ///< The attempt or the connection failed; its context still has to be dropped.
    Retrying,    ///< Waiting for the next attempt.
};

/// The states of a connection, without a server. A failed attempt's context and timers are
/// destroyed before the next attempt starts, so no callback of it can follow.
class ConnectionMachine {
 public:
    static constexpr double firstRetryDelaySeconds = 0.010;
    static constexpr double longestRetryDelaySeconds = 2.0;

    ConnectionState state() const { return state_; }

    void attempt();
    /// Return whether the event was accepted in this state.
    bool becameReady();
    bool failed();
    /// Returns the seconds to wait after a failure, doubled each time until a connection succeeds.
    double waitForRetry();
    /// A server has appeared: resets the delay. Returns whether to attempt now instead of waiting.
    bool serverAppeared();

 private:
    ConnectionState state_ = ConnectionState::Retrying;
    double retryDelaySeconds_ = firstRetryDelaySeconds;
};

/// Connects to the server and reconnects whenever an attempt fails or the connection ends: after a
/// delay, and at once when a local server's socket appears.
///
///     Connection connection(std::nullopt, ourApplicationName,
///                           {.ready = [&](PulseContext& context) { ... },
///                            .lost = [&] { ... },
///                            .changed = [&](Part part) { ... }});
///
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

    /// Starts the first attempt, without calling a handler from inside. The server knows this
    /// program by `applicationName`, a literal.
    Connection(NSString server, const char* applicationName, Handlers handlers);

    /// nullptr unless the server answers.
    PulseContext* context();
    /// Why there is no connection, in words for users; nil during an attempt, and after a server
    /// that accepted the connection has not answered in time, as it may only be slow.
    const NSString& refusal() const { return refusal_; }

 private:
    struct LoopDeleter {
        void operator()(pa_glib_mainloop* loop) const { pa_glib_mainloop_free(loop); }
    };

    void attempt();
    void becameReady();
    void failed(const NSString& refusal);
    void debugFailure(const std::string& what, const NSString& refusal);
    std::string reason() const;
    void watchForServer();
    void serverAppeared();

    NSString server_;
    const char* applicationName_;
    Handlers handlers_;
    ConnectionMachine machine_;
    NSString refusal_;
    std::string debuggedFailure_;                 // Since the last connection.
    std::optional<glib::FileWatch> socketWatch_;  // While there is no connection.
    OneShotTimer timer_;  // While connecting its deadline, while retrying the wait.
    std::unique_ptr<pa_glib_mainloop, LoopDeleter> loop_;
    std::unique_ptr<PulseContext> context_;
};

/// The file of the local socket that a server address leads to, the first one of several; nullopt
/// if it leads to none. `server` nil: the environment's address, else the session's socket.
std::optional<std::filesystem::path> serverSocket(const NSString& server);

}  // namespace pulse
