#include "tests/rigs/FakeHeadset.hpp"

#include "tests/rigs/PipeWireServer.hpp"
#include "tests/rigs/PulseAudioServer.hpp"
#include "tests/rigs/UnixSocket.hpp"
#include "tests/rigs/Waiting.hpp"

#include <sstream>
#include <stdexcept>
#include <vector>

namespace rigs {
namespace {

constexpr const char* deviceAddress = "AA_BB_CC_DD_EE_01";

// The second word of the first line that has the text.
std::string nameIn(const std::string& listing, const std::string& text) {
    std::istringstream lines(listing);
    std::string line;
    while (std::getline(lines, line)) {
        if (line.find(text) == std::string::npos) continue;
        std::istringstream words(line);
        std::string name;
        words >> name >> name;
        return name;
    }
    return "";
}

}  // namespace

FakeHeadset::FakeHeadset(SoundServer& server) : server_(server) {
    const ServerFolder& folder = server.folder();
    const std::string busAddress = "unix:path=" + (folder.path() / "system-bus").string();
    test::Environment environment = folder.environment();
    environment["DBUS_SYSTEM_BUS_ADDRESS"] = busAddress;
    bus_ = test::ChildProcess({"dbus-daemon", std::string("--config-file=") + RIG_FAKE_BUS,
                               "--address=" + busAddress, "--nofork", "--nopidfile", "--nosyslog"},
                              {.environment = environment, .log = folder.log()});
    if (!waitUntil([&] { return takesConnections(folder.path() / "system-bus"); }))
        throw std::runtime_error("no bus: " + folder.logged());
    service_ =
        std::make_unique<Conversation>(std::vector<std::string>{RIG_FAKE_BLUEZ}, environment);
    server.setEnvironment("DBUS_SYSTEM_BUS_ADDRESS", busAddress);
    server.setEnvironment("LD_PRELOAD", RIG_FAKE_VOICE_SOCKETS);
    if (server.kind() == ServerKind::PipeWire)
        static_cast<PipeWireServer&>(server).setBluetooth(Bluetooth::On);
    else
        static_cast<PulseAudioServer&>(server).addScriptLine(
            "load-module module-bluetooth-policy auto_switch=0\n"
            "load-module module-bluetooth-discover headset=native");
}

void FakeHeadset::connect() {
    // The server may not have registered yet; then the headset is answered when it does.
    ask("connect");
    if (!waitUntil([this] { return itsVolume() >= 0 && itsGain() >= 0 && !sinkName().empty(); }))
        throw std::runtime_error("the headset is not taken: " + server_.folder().logged());
}

void FakeHeadset::disconnect() {
    ask("disconnect");
    if (!waitUntil([this] { return sinkName().empty(); }))
        throw std::runtime_error("the headset's device stays");
}

// The two servers' names for the profiles.
void FakeHeadset::choose(Profile profile) {
    const bool isPipeWire = server_.kind() == ServerKind::PipeWire;
    const char* music = isPipeWire ? "a2dp-sink" : "a2dp_sink";
    const char* calls = isPipeWire ? "headset-head-unit" : "handsfree_head_unit";
    server_.pactl({"set-card-profile", cardName(), profile == Profile::Music ? music : calls});
}

std::string FakeHeadset::sinkName() const {
    return nameIn(server_.pactl({"list", "short", "sinks"}), deviceAddress);
}

std::string FakeHeadset::cardName() const {
    return nameIn(server_.pactl({"list", "short", "cards"}), deviceAddress);
}

int FakeHeadset::number(const std::string& key) {
    const std::string state = ask("state");
    return std::stoi(state.substr(state.find(key) + key.size()));
}

}  // namespace rigs
