#pragma once

#include "backends/glib/GLibRunLoop.hpp"
#include "shells/sound/SoundService.hpp"

#include <memory>
#include <set>
#include <string>

/// Who is told of what happens to the sound service.
class LockSessionUser {
 public:
    virtual ~LockSessionUser() = default;
    /// Another service was installed: the widget has to be assembled anew.
    virtual void serviceChanged() = 0;
    /// The rows have to be read again.
    virtual void volumesChanged() = 0;
    /// The sound server has fallen silent, or answers again.
    virtual void silenceChanged() = 0;
};

/// What this process, the lock screen's shell, lends the widget while it is locked: the platform's
/// main loop and the sound service. It is there as long as somebody holds it, and nothing of it
/// stays in the process's main loop afterwards. Main thread.
class LockSession {
 public:
    /// The one that is there, or else a new one. `soundModule` is the file of the sound server's
    /// module.
    static std::shared_ptr<LockSession> shared(const std::string& soundModule);
    /// Gives it back. One that has a volume on its way lives on until that has had its time to
    /// arrive: the connection's end would lose it.
    static void release(std::shared_ptr<LockSession> session);

    explicit LockSession(const std::string& soundModule);

    /// Begins to connect to the sound server, the first time only. Does not wait for it.
    void connect() { sound_.connect(); }
    /// Whether no server answers, and has not for a while.
    bool isSilent() const { return sound_.isSilent(); }
    bool isWriting() const { return sound_.isWriting(); }

    /// From now on; the user must be removed before it goes.
    void add(LockSessionUser& user) { users_.insert(&user); }
    void remove(LockSessionUser& user) { users_.erase(&user); }

 private:
    void tell(void (LockSessionUser::*what)());

    GLibRunLoop runLoop_;
    SoundService sound_;
    std::set<LockSessionUser*> users_;
};
