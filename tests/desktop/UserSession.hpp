#pragma once

#include "tests/desktop/XScreen.hpp"
#include "tests/desktop/XServer.hpp"
#include "tests/rigs/PulseAudioServer.hpp"

#include <string>
#include <vector>

namespace test {

/// Whether the session has a bus.
enum class Bus { Here, None };
/// Whether its programs may tell assistive technology what they show.
enum class Accessibility { Here, None };

/// A user's session on an X server: a screen, a bus, a home, and a sound server once it is started.
/// The user has declined the offer of outputs for roles.
/// All of it is this test's own and ends with it.
class UserSession {
 public:
    explicit UserSession(Bus bus = Bus::Here, Accessibility accessibility = Accessibility::None);

    /// For programs of the session.
    Environment environment() const;
    /// The mixer, with what it says in the session's log.
    ChildProcess startMixer(std::vector<std::string> arguments) const;
    /// The same to its end; answers its exit status.
    int runMixer(std::vector<std::string> arguments) const;
    void endBus();
    /// What all programs of the session have said.
    std::string logged() const { return folder.logged(); }

    /// Waits for a window of the mixer, and answers where it is; an empty one when none comes.
    CGRect waitForWindow() const;
    /// Whether the mixer's windows go.
    bool waitForNoWindow() const;

    rigs::ServerFolder folder;
    XServer server;
    XUser user{server.displayName()};
    XScreen screen{server.displayName()};
    rigs::PulseAudioServer sound{folder};

 private:
    Bus bus_;
    Accessibility accessibility_;
    ChildProcess daemon_;
};

}  // namespace test
