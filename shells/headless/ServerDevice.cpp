#include "shells/headless/Device.hpp"
#include "shells/sound/SoundServer.hpp"

#include <utility>

namespace headless {
namespace {

/// The server's service, with everything that is set through it told to an observer.
class ObservedService : public AVSystemController {
 public:
    explicit ObservedService(std::shared_ptr<AVSystemController> service)
        : service_(std::move(service)) {}

    std::string_view className() const override { return service_->className(); }
    bool getVolume(float& volume, const NSString& category) override {
        return service_->getVolume(volume, category);
    }
    bool setVolumeTo(float volume, const NSString& category) override {
        if (observer_) observer_(category, volume);
        return service_->setVolumeTo(volume, category);
    }
    std::optional<Level> levelOf(const NSString& category) override {
        return service_->levelOf(category);
    }
    bool setMute(Mute mute, const NSString& category) override {
        return service_->setMute(mute, category);
    }
    NSString routeForCategory(const NSString& category) override {
        return service_->routeForCategory(category);
    }
    void setObserver(Device::SetVolumeObserver observer) { observer_ = std::move(observer); }

 private:
    std::shared_ptr<AVSystemController> service_;
    Device::SetVolumeObserver observer_;
};

Failure notTold() {
    return "only a simulated device can be told that";
}

class ServerDevice : public Device {
 public:
    explicit ServerDevice(std::unique_ptr<SoundServer> server)
        : server_(std::move(server)),
          service_(std::make_shared<ObservedService>(server_->service())) {}

    std::shared_ptr<AVSystemController> service() override { return service_; }
    void observeSetVolume(SetVolumeObserver observer) override {
        service_->setObserver(std::move(observer));
    }
    void observeServer(ServerObserver observer) override {
        server_->setAnswersHandler([this, observer](SoundServer::Answers answers) {
            isReady_ = answers == SoundServer::Answers::Yes;
            if (observer)
                observer(isReady_ ? ServerEvent::BeganToAnswer : ServerEvent::CeasedToAnswer);
        });
        server_->setAvailabilityHandler([observer] {
            if (observer) observer(ServerEvent::AvailabilityChanged);
        });
    }
    Waiter& waiter() override { return *waiter_; }
    bool isReady() const override { return isReady_; }
    bool isWriting() const override { return server_->isWriting(); }

    /// Asked about, it is followed from now on.
    void nameCategory(const std::string& category) override {
        server_->service()->routeForCategory(category);
    }
    Failure changeVolume(const std::string& category, float volume) override {
        if (server_->service()->setVolumeTo(volume, category)) return std::nullopt;
        return "'" + category + "' has no volume now";
    }
    Failure setReadable(const std::string& /*category*/, YesNo /*readable*/) override {
        return notTold();
    }
    Failure setRoute(const std::string& /*category*/, const NSString& /*route*/) override {
        return notTold();
    }

 private:
    std::unique_ptr<Waiter> waiter_ = makeGLibWaiter();
    std::unique_ptr<SoundServer> server_;
    std::shared_ptr<ObservedService> service_;
    bool isReady_ = false;
};

}  // namespace

std::unique_ptr<Device> makeServerDevice(std::unique_ptr<SoundServer> server) {
    return std::make_unique<ServerDevice>(std::move(server));
}

}  // namespace headless
