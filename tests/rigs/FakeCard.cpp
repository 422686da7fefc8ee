#include "tests/rigs/FakeCard.hpp"

#include "tests/rigs/FakeAlsaCard.hpp"
#include "tests/rigs/FakePipeWireCard.hpp"

namespace rigs {

std::string FakeCard::activePort() const {
    const std::string sink = server_.pactl({"get-default-sink"});
    const std::string listing = server_.pactl({"list", "sinks"});
    const std::size_t begin = listing.find("Name: " + sink);
    const std::size_t end = listing.find("Sink #", begin);
    const std::string description = listing.substr(begin, end - begin);
    const std::string key = "Active Port: ";
    const std::size_t port = description.find(key);
    if (port == std::string::npos) return "";
    const std::size_t name = port + key.size();
    return description.substr(name, description.find('\n', name) - name);
}

std::unique_ptr<FakeCard> makeFakeCard(SoundServer& server) {
    if (server.kind() == ServerKind::PipeWire) return std::make_unique<FakePipeWireCard>(server);
    return std::make_unique<FakeAlsaCard>(server);
}

}  // namespace rigs
