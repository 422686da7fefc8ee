#include "backends/pulse/PulseAudioController.hpp"
#include "shells/sound/SoundServer.hpp"

#include <utility>

namespace {

class PulseServer : public SoundServer {
 public:
    std::shared_ptr<AVSystemController> service() override { return controller_; }
    void setReadyHandler(std::function<void()> handler) override {
        controller_->setStateHandler(
            [handler = std::move(handler)](PulseAudioController::State state) {
                if (state == PulseAudioController::State::Ready && handler) handler();
            });
    }
    void setAvailabilityHandler(std::function<void()> handler) override {
        controller_->setAvailabilityHandler(std::move(handler));
    }

 private:
    std::shared_ptr<PulseAudioController> controller_ = std::make_shared<PulseAudioController>();
};

}  // namespace

extern "C" __attribute__((visibility("default"))) SoundServer* tarnwick_sound_server_open() {
    return std::make_unique<PulseServer>().release();
}
