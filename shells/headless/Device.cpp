#include "shells/headless/Device.hpp"

#include <utility>

namespace headless {
namespace {

constexpr const char* notTold = "only a simulated device can be told that";

}  // namespace

Device::Device(std::shared_ptr<SoundServer> server, std::shared_ptr<SimulatedAudioDevice> simulated,
               std::unique_ptr<Waiter> waiter)
    : server_(std::move(server)), simulated_(std::move(simulated)), waiter_(std::move(waiter)) {}

Device Device::simulated() {
    const auto device = std::make_shared<SimulatedAudioDevice>();
    return {device, device, makePollingWaiter()};
}

Device Device::on(std::shared_ptr<SoundServer> server) {
    return {std::move(server), nullptr, makeGLibWaiter()};
}

void Device::nameCategory(const std::string& category) {
    if (simulated_)
        simulated_->nameCategory(category);
    else
        server_->routeForCategory(category);  // The request makes the server follow it.
}

Problem Device::changeVolume(const std::string& category, float volume) {
    if (simulated_) {
        simulated_->changeVolume(category, volume);
        return std::nullopt;
    }
    const SoundServer::Change change{volume, AVSystemController::Mute::Off};
    if (server_->change(change, category)) return std::nullopt;
    return "'" + category + "' has no volume now";
}

Problem Device::setReadable(const std::string& category, YesNo readable) {
    if (!simulated_) return notTold;
    simulated_->setReadable(category, readable == YesNo::Yes);
    return std::nullopt;
}

Problem Device::setRoute(const std::string& category, const NSString& route) {
    if (!simulated_) return notTold;
    simulated_->setRoute(category, route);
    return std::nullopt;
}

}  // namespace headless
