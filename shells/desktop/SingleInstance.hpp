#pragma once

#include "backends/bus/Bus.hpp"
#include "shells/desktop/InstanceLock.hpp"

#include <functional>
#include <optional>
#include <vector>

/// What one start of the program asks of the one that runs already.
enum class InstanceRequest { Nothing, Show, Toggle, Quit };

/// The program's name on the session bus, which one program of a session has: the others find it
/// there. Everything goes on while the main loop runs, so that a slow bus holds nobody up. Main
/// thread.
class SingleInstance {
 public:
    enum class Standing {
        Undecided,
        Alone,  ///< There is no session bus, none that lets us be known on it, or no answer there.
        First,
        Later,  ///< Another one runs.
    };
    /// A bus that takes longer is not waited for, seconds.
    static constexpr double patienceSeconds = 0.25;

    SingleInstance() : cancellable_(g_cancellable_new()) {}
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Returns at once. Without a session bus the standing is known then; and where no other start
    /// holds the lock, nothing else is done before connect().
    void begin();
    /// Goes onto the bus, if begin() has not and there is one. Returns at once.
    void connect();
    Standing standing() const { return standing_; }
    /// Whether another start holds the lock: most likely this one only asks it for something.
    bool isLockTaken() const { return lockState_ == InstanceLock::State::Taken; }
    /// Runs the main loop until the standing is known, for as long as that at most; not at all
    /// where the lock is ours.
    Standing waitForStanding(double seconds = patienceSeconds);
    /// Called when the standing has changed: by a slow bus, or one that has ended.
    void setStandingHandler(std::function<void()> handler) {
        standingHandler_ = std::move(handler);
    }

    /// For a later one: asks the first, and waits for its answer. False when there is none, as
    /// where the first has not come to the bus; then this goes on by itself.
    bool ask(InstanceRequest request);
    /// For the first one: what the later ones ask, also before the handler was set.
    void setRequestHandler(std::function<void(InstanceRequest)> handler);

    /// nullptr unless this is the first one.
    GDBusConnection* bus() const { return standing_ == Standing::First ? bus_.get() : nullptr; }

 private:
    void connected(BusConnection bus);
    void requestName();
    void nameAnswered(GVariant* answer);
    /// The answer is the caller's.
    GVariant* call(InstanceRequest request, GError** error) const;
    void setStanding(Standing standing);
    void request(InstanceRequest request);
    static void answerCall(GDBusConnection* bus, const char* sender, const char* path,
                           const char* interface, const char* method, GVariant* arguments,
                           GDBusMethodInvocation* invocation, gpointer instance);

    InstanceLock lock_;
    InstanceLock::State lockState_ = InstanceLock::State::Unknown;
    bool isConnecting_ = false;
    Standing standing_ = Standing::Undecided;
    BusCancellable cancellable_;
    BusConnection bus_;
    gulong closedHandler_ = 0;
    std::optional<BusObject> object_;
    std::function<void()> standingHandler_;
    std::function<void(InstanceRequest)> requestHandler_;
    std::vector<InstanceRequest> waiting_;
};
