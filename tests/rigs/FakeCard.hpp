#pragma once

#include "tests/rigs/SoundServer.hpp"

#include <memory>
#include <string>

namespace rigs {

/// A sound card without sound: a speaker, and places to plug in headphones, a line and a screen.
/// The server follows the plugs as it does with a real card.
class FakeCard {
 public:
    enum class Plug { Headphones, LineOut, Hdmi };

    virtual ~FakeCard() = default;

    /// The running server gets the card, with nothing plugged in, and its output becomes the
    /// default device. Runs the loop until that is so.
    virtual void insert() = 0;
    virtual void plug(Plug plug) = 0;
    virtual void unplug(Plug plug) = 0;

    /// The default device's active port as the server names it; empty when it has none.
    std::string activePort() const;

 protected:
    explicit FakeCard(SoundServer& server) : server_(server) {}

    SoundServer& server_;
};

/// Before the server is started. The server outlives the card.
std::unique_ptr<FakeCard> makeFakeCard(SoundServer& server);

}  // namespace rigs
