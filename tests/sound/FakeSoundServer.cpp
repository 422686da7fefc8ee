// A sound server's module whose server answers when the test says so.
#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "shells/sound/SoundServer.hpp"

#include <utility>

namespace {

class FakeServer;
FakeServer* current = nullptr;

class FakeServer : public SoundServer {
 public:
    FakeServer() { current = this; }
    ~FakeServer() override { current = nullptr; }
    FakeServer(const FakeServer&) = delete;
    FakeServer& operator=(const FakeServer&) = delete;

    std::shared_ptr<AVSystemController> service() override { return device_; }
    bool isWriting() const override { return false; }
    void setAttention(Attention attention) override { attended = attention; }
    void setAnswersHandler(std::function<void(Answers)> handler) override {
        answers = std::move(handler);
    }
    void setAvailabilityHandler(std::function<void()> handler) override {
        availability = std::move(handler);
    }
    void setRefusalHandler(RefusalHandler handler) override { refusal = std::move(handler); }

    Attention attended = Attention::Watched;
    std::function<void(Answers)> answers;
    std::function<void()> availability;
    RefusalHandler refusal;

 private:
    std::shared_ptr<SimulatedAudioDevice> device_ = std::make_shared<SimulatedAudioDevice>();
};

}  // namespace

extern "C" {
SoundServer* tarnwick_sound_server_open(const char* /*address*/) {
    return std::make_unique<FakeServer>().release();
}
SoundServer* fake_sound_server() {
    return current;
}
bool fake_sound_server_rests() {
    return current->attended == SoundServer::Attention::Resting;
}
void fake_sound_server_answers() {
    current->answers(SoundServer::Answers::Yes);
}
void fake_sound_server_falls_silent() {
    current->answers(SoundServer::Answers::No);
}
void fake_sound_server_changes() {
    current->availability();
}
void fake_sound_server_refuses() {
    current->refusal("sink:spk", "Access denied");
}
}
