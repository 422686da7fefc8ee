#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "shells/headless/Device.hpp"

namespace headless {
namespace {

class SimulatedDevice : public Device {
 public:
    std::shared_ptr<AVSystemController> service() override { return audio_; }
    void observeSetVolume(SetVolumeObserver observer) override {
        audio_->setSetVolumeObserver(std::move(observer));
    }
    void observeServer(ServerObserver /*observer*/) override {}  // There is none.
    Waiter& waiter() override { return *waiter_; }
    bool isReady() const override { return true; }
    bool isWriting() const override { return false; }
    void nameCategory(const std::string& category) override { audio_->nameCategory(category); }
    Failure changeVolume(const std::string& category, float volume) override {
        audio_->changeVolume(category, volume);
        return std::nullopt;
    }
    Failure setReadable(const std::string& category, YesNo readable) override {
        audio_->setReadable(category, readable == YesNo::Yes);
        return std::nullopt;
    }
    Failure setRoute(const std::string& category, const NSString& route) override {
        audio_->setRoute(category, route);
        return std::nullopt;
    }

 private:
    std::unique_ptr<Waiter> waiter_ = makePollingWaiter();
    std::shared_ptr<SimulatedAudioDevice> audio_ = std::make_shared<SimulatedAudioDevice>();
};

}  // namespace

std::unique_ptr<Device> makeSimulatedDevice() {
    return std::make_unique<SimulatedDevice>();
}

}  // namespace headless
