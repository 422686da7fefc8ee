#pragma once

#include "tests/rigs/Conversation.hpp"
#include "tests/rigs/FakeCard.hpp"

#include <memory>

namespace rigs {

/// A device that a program exports to PipeWire.
class FakePipeWireCard : public FakeCard {
 public:
    explicit FakePipeWireCard(SoundServer& server) : FakeCard(server) {}
    void insert() override;
    void plug(Plug plug) override;
    void unplug(Plug plug) override;
    /// Tells the program something; the active port, its linear volume and its mute.
    std::string ask(const std::string& line) { return program_->ask(line); }

 private:
    std::unique_ptr<Conversation> program_;
};

}  // namespace rigs
