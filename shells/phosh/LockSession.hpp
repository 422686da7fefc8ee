#pragma once

#include "backends/glib/GLibRunLoop.hpp"
#include "shells/sound/SoundService.hpp"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace phosh {

/// The files that the plugin loads. Their paths are derived from the plugin's own, so that it works
/// in an installation, in a build tree, and where it has been moved to.
struct PluginSetting {
    std::vector<std::string> bundles;  ///< From top to bottom.
    std::string soundModule;           ///< The sound server's module.
};

/// The environment variable TARNWICK_BUNDLE names another bundle to show, for trying one out.
PluginSetting pluginSetting();

/// Sets up the process on the first call: installs the backends, makes text white, as the lock
/// screen is black, and assumes a phone if the machine reports no model. The environment variable
/// TARNWICK_PREFERENCES names another folder for the mixer's files.
void preparePlatform();

/// Receives the events of the sound service.
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

/// What this process, the lock screen's shell, provides for the widget while it is locked: the
/// platform's main loop and the sound service. It exists as long as a reference to it does, and
/// leaves nothing in the process's main loop. Main thread.
class LockSession {
 public:
    /// The existing session, or a new one. `soundModule` is the file of the sound server's module.
    static std::shared_ptr<LockSession> shared(const std::string& soundModule);
    /// Releases it. A session with a pending write lives until that has had time to arrive, since
    /// ending the connection would lose it.
    static void release(std::shared_ptr<LockSession> session);

    explicit LockSession(const std::string& soundModule);

    /// Starts connecting to the sound server on the first call. Does not wait.
    void connect() { sound_.connect(); }
    /// Keeps to the user's choice of outputs for roles; for after the picture. What nobody has
    /// decided is not offered here: a locked phone may be in anyone's hands.
    void followOutputs() { sound_.followOutputs(); }
    /// Whether no server has answered for a while.
    bool isSilent() const { return sound_.isSilent(); }
    bool isWriting() const { return sound_.isWriting(); }

    /// Adds a user; it must be removed before it is destroyed.
    void add(LockSessionUser& user) { users_.insert(&user); }
    void remove(LockSessionUser& user) { users_.erase(&user); }

 private:
    void tell(void (LockSessionUser::*what)());

    glib::GLibRunLoop runLoop_;
    shell::SoundService sound_;
    std::set<LockSessionUser*> users_;
};

}  // namespace phosh
