#include "tests/rigs/FakePipeWireCard.hpp"

#include "tests/rigs/Waiting.hpp"

#include <stdexcept>

namespace rigs {
namespace {

const char* portOf(FakeCard::Plug plug) {
    switch (plug) {
        case FakeCard::Plug::Headphones:
            return "headphones";
        case FakeCard::Plug::LineOut:
            return "lineout";
        case FakeCard::Plug::Hdmi:
            return "hdmi";
    }
    return "";
}

}  // namespace

void FakePipeWireCard::insert() {
    program_ = std::make_unique<Conversation>(std::vector<std::string>{RIG_FAKE_CARD, "fake"},
                                              server_.folder().environment());
    // The session manager makes it the default, for its priority.
    const auto isDefault = [this] {
        return server_.pactl({"get-default-sink"}) == "output.fake\n" && activePort() == "speaker";
    };
    if (!waitUntil(isDefault)) throw std::runtime_error("the fake card is not taken");
}

void FakePipeWireCard::plug(Plug plug) {
    ask(std::string("available ") + portOf(plug) + " yes");
}

void FakePipeWireCard::unplug(Plug plug) {
    ask(std::string("available ") + portOf(plug) + " no");
}

}  // namespace rigs
