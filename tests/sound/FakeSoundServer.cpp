// A sound server's module whose server answers when the test says so.
#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "shells/sound/SoundModule.hpp"
#include "tests/support/FakeRoleOutputs.hpp"

namespace {

class FakeServer;
FakeServer* current = nullptr;

class FakeServer : public SimulatedAudioDevice {
 public:
    FakeServer() { current = this; }
    ~FakeServer() override { current = nullptr; }
    FakeServer(const FakeServer&) = delete;
    FakeServer& operator=(const FakeServer&) = delete;

    void setAttention(Attention attention) override { attended = attention; }
    RoleOutputs* roleOutputs() override { return &outputs; }
    using SoundServer::tellAvailability;
    using SoundServer::tellRefusal;
    using SoundServer::tellState;

    Attention attended = Attention::Watched;
    test::FakeRoleOutputs outputs;
};

}  // namespace

extern "C" {
void tarnwick_sound_server_open(const char* /*address*/, std::shared_ptr<SoundServer>& server) {
    server = std::make_shared<FakeServer>();
}
SoundServer* fake_sound_server() {
    return current;
}
test::FakeRoleOutputs* fake_sound_server_outputs() {
    return &current->outputs;
}
bool fake_sound_server_rests() {
    return current->attended == SoundServer::Attention::Resting;
}
void fake_sound_server_answers() {
    current->tellState(SoundServer::State::Ready);
}
void fake_sound_server_falls_silent() {
    current->tellState(SoundServer::State::Unavailable);
}
void fake_sound_server_changes() {
    current->tellAvailability();
}
void fake_sound_server_refuses() {
    current->tellRefusal("sink:spk", "Access denied");
}
}
