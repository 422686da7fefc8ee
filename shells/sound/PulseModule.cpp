#include "backends/pulse/PulseAudioController.hpp"
#include "shells/sound/SoundServer.hpp"

#include <utility>

namespace {

class PulseServer : public SoundServer {
 public:
    explicit PulseServer(const NSString& address)
        : controller_(std::make_shared<PulseAudioController>(address)) {}

    std::shared_ptr<AVSystemController> service() override { return controller_; }
    bool isWriting() const override { return controller_->isWriting(); }
    void setAttention(Attention attention) override {
        using Kind = PulseAudioController::Attention;
        controller_->setAttention(attention == Attention::Watched ? Kind::Watched : Kind::Resting);
    }
    void setAnswersHandler(std::function<void(Answers)> handler) override {
        using State = PulseAudioController::State;
        controller_->setStateHandler([handler = std::move(handler)](State state) {
            if (handler) handler(state == State::Ready ? Answers::Yes : Answers::No);
        });
    }
    void setAvailabilityHandler(std::function<void()> handler) override {
        controller_->setAvailabilityHandler(std::move(handler));
    }
    void setRefusalHandler(RefusalHandler handler) override {
        controller_->setRefusalHandler(std::move(handler));
    }

 private:
    std::shared_ptr<PulseAudioController> controller_;
};

}  // namespace

extern "C" SoundServer* tarnwick_sound_server_open(const char* address) {
    const NSString place = address ? NSString(address) : std::nullopt;
    return std::make_unique<PulseServer>(place).release();
}
