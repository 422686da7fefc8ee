#pragma once

#include "tests/rigs/Conversation.hpp"
#include "tests/rigs/SoundServer.hpp"

#include <memory>
#include <string>

namespace rigs {

/// A Bluetooth headset that pretends, behind a Bluetooth service that pretends, on a system bus of
/// its own. What the server and the headset say to each other is real.
class FakeHeadset {
 public:
    enum class Profile { Music, HandsFree };

    /// Before the server is started. The server outlives the headset.
    explicit FakeHeadset(SoundServer& server);

    /// It is switched on, and the server has a device for it in the profile for music.
    void connect();
    void disconnect();
    /// The server goes over to the profile.
    void choose(Profile profile);

    /// The user presses its buttons: for music from 0 to 127, for calls from 0 to 15.
    void setItsVolume(int volume) { ask("volume " + std::to_string(volume)); }
    void setItsGain(int gain) { ask("gain " + std::to_string(gain)); }
    /// What it was last told, on the same scales; -1 while there is no such profile.
    int itsVolume() { return number("volume="); }
    int itsGain() { return number("gain="); }

    /// The name of the server's device for it; empty while there is none.
    std::string sinkName() const;

 private:
    std::string ask(const std::string& line) { return service_->ask(line); }
    int number(const std::string& key);
    std::string cardName() const;

    SoundServer& server_;
    test::ChildProcess bus_;
    std::unique_ptr<Conversation> service_;
};

}  // namespace rigs
