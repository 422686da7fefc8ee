#pragma once

#include "backends/bus/Bus.hpp"
#include "platform/foundation/FileLock.hpp"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace desktop {

/// What one start of the program requests from the running mixer.
enum class InstanceRequest { Nothing, Show, Toggle, Quit };

/// Makes the program the only mixer of its session. It owns a name on the session bus, by which
/// later starts find it. Everything happens while the main loop runs, so a slow bus delays nothing.
///
///     instance.begin();
///     if (instance.waitForStanding() == SingleInstance::Standing::Later)
///         instance.ask(InstanceRequest::Toggle);
///
/// Main thread.
class SingleInstance {
 public:
    enum class Standing {
        Undecided,
        Alone,  ///< No session bus, no name on it, or no answer from it.
        First,
        Later,  ///< Another one runs.
    };
    /// The longest wait for the bus, in seconds.
    static constexpr double patienceSeconds = 0.25;

    SingleInstance() : cancellable_(g_cancellable_new()) {}
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Returns at once. Without a session bus the standing is known immediately. If no other start
    /// holds the lock, nothing else happens before connect().
    void begin();
    /// Connects to the bus, if there is one and begin() has not. Returns at once.
    void connect();
    Standing standing() const { return standing_; }
    /// Whether another start holds the lock, so that this one most likely only calls it.
    bool isLockTaken() const { return lockState_ == FileLock::State::Taken; }
    /// Runs the main loop until the standing is known, for at most that many seconds; not at all if
    /// the lock is ours.
    Standing waitForStanding(double seconds = patienceSeconds);
    /// Called when the standing changes: a slow bus answered, or the bus ended.
    void setStandingHandler(std::function<void()> handler) {
        standingHandler_ = std::move(handler);
    }

    /// For a later start: sends the first one a request and waits for the answer. False without an
    /// answer, for example because the first is not on the bus; then this start continues alone.
    bool ask(InstanceRequest request);
    /// For the first start: receives the requests of later ones, including those from before this
    /// call.
    void setRequestHandler(std::function<void(InstanceRequest)> handler);

    /// nullptr unless this is the first one.
    GDBusConnection* bus() const { return standing_ == Standing::First ? bus_.get() : nullptr; }

 private:
    void connected(bus::BusConnection bus);
    void requestName();
    void nameAnswered(GVariant* answer);
    /// The answer is the caller's.
    GVariant* call(InstanceRequest request, GError** error) const;
    void setStanding(Standing standing);
    void request(InstanceRequest request);
    static void answerCall(GDBusConnection* bus, const char* sender, const char* path,
                           const char* interface, const char* method, GVariant* arguments,
                           GDBusMethodInvocation* invocation, gpointer instance);

    FileLock lock_;  ///< In the user's runtime folder, held by one mixer of a session at a time.
    FileLock::State lockState_ = FileLock::State::Unknown;
    bool isConnecting_ = false;
    Standing standing_ = Standing::Undecided;
    bus::BusCancellable cancellable_;
    bus::BusConnection bus_;
    gulong closedHandler_ = 0;
    std::optional<bus::BusObject> object_;
    std::function<void()> standingHandler_;
    std::function<void(InstanceRequest)> requestHandler_;
    std::vector<InstanceRequest> waiting_;
};

}  // namespace desktop
