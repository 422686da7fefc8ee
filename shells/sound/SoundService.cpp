#include "shells/sound/SoundService.hpp"

#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <dlfcn.h>

#include <cstdio>
#include <utility>

namespace {

constexpr double patienceSeconds = 1;

/// Stands in until the server is connected to: nothing is known yet but where sound usually goes.
class AwaitedService : public AVSystemController {
 public:
    std::string_view className() const override { return "AwaitedService"; }
    bool getVolume(float& /*volume*/, const NSString& /*category*/) override { return false; }
    bool setVolumeTo(float /*volume*/, const NSString& /*category*/) override { return false; }
    NSString routeForCategory(const NSString& /*category*/) override { return "Speaker"; }
};

void say(const char* what) {
    std::fprintf(stderr, "tarnwick: %s\n", what);
}

}  // namespace

SoundService::SoundService(SoundSource source, std::string serverModule)
    : serverModule_(std::move(serverModule)) {
    settled_ = source == SoundSource::Simulated;
    if (settled_)
        installed(std::make_shared<SimulatedAudioDevice>());
    else
        installed(std::make_shared<AwaitedService>());
}

SoundService::~SoundService() {
    changeHandler_ = {};
    installed(nullptr);
}

void SoundService::installed(std::shared_ptr<AVSystemController> service) {
    AVSystemController::setSharedAVSystemController(std::move(service));
    if (changeHandler_) changeHandler_();
}

void SoundService::connect() {
    if (settled_ || std::exchange(connecting_, true)) return;
    if (!openServer()) return useSimulatedDevice("the sound server's module cannot be loaded");
    server_->setReadyHandler([this] { serverIsReady(); });
    server_->setAvailabilityHandler([this] {
        if (changeHandler_) changeHandler_();
    });
    NSRunLoop::mainRunLoop().performAfterDelay(
        patienceSeconds, [this, alive = std::weak_ptr<bool>(alive_)] {
            if (!alive.expired() && !settled_) useSimulatedDevice("no sound server answers");
        });
    installed(server_->service());
}

bool SoundService::openServer() {
    void* module = dlopen(serverModule_.c_str(), RTLD_NOW | RTLD_LOCAL);
    const auto open =
        module ? reinterpret_cast<SoundServerEntry>(dlsym(module, soundServerEntryName)) : nullptr;
    if (open)
        server_.reset(open());
    else
        say(dlerror());
    return server_ != nullptr;
}

void SoundService::useSimulatedDevice(const char* reason) {
    settled_ = true;
    say((std::string(reason) + ": simulating one").c_str());
    installed(std::make_shared<SimulatedAudioDevice>());
}

void SoundService::serverIsReady() {
    settled_ = true;
    if (AVSystemController::sharedAVSystemController() == server_->service()) return;
    say("the sound server answers now");
    installed(server_->service());
}
