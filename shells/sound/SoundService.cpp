#include "shells/sound/SoundService.hpp"

#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"

#include <utility>

namespace shell {
namespace {

/// The service before the connection: knows nothing but the usual route.
class AwaitedService : public AVSystemController {
 public:
    std::string_view className() const override { return "AwaitedService"; }
    bool getVolume(float& /*volume*/, const NSString& /*category*/) override { return false; }
    bool setVolumeTo(float /*volume*/, const NSString& /*category*/) override { return false; }
    std::optional<Level> levelOf(const NSString& /*category*/) override { return std::nullopt; }
    bool setMute(Mute /*mute*/, const NSString& /*category*/) override { return false; }
    NSString routeForCategory(const NSString& /*category*/) override { return "Speaker"; }
};

}  // namespace

SoundService::SoundService(SoundSource source, std::string serverModule)
    : serverModule_(std::move(serverModule)) {
    if (source == SoundSource::Simulated) {
        stage_ = Stage::Simulated;
        install(std::make_shared<SimulatedAudioDevice>());
    } else {
        install(std::make_shared<AwaitedService>());
    }
}

SoundService::~SoundService() {
    changeHandler_ = {};
    install(nullptr);
    if (!server_) return;
    if (outputs_) outputs_->setChangeHandler({});  // Others may still hold a reference.
    server_->setStateHandler({});
    server_->setAvailabilityHandler({});
}

void SoundService::install(std::shared_ptr<AVSystemController> service) {
    AVSystemController::setSharedAVSystemController(std::move(service));
    if (changeHandler_) changeHandler_();
}

void SoundService::loadAhead() {
    if (stage_ == Stage::Simulated || connecting_ || loading_.valid()) return;
    loading_ = std::async(std::launch::async, loadSoundModule, serverModule_);
}

void SoundService::connect() {
    if (stage_ == Stage::Simulated || std::exchange(connecting_, true)) return;
    const auto module = loading_.valid() ? loading_.get() : loadSoundModule(serverModule_);
    const auto server = openSoundServer(module, std::nullopt);
    if (!server) {
        complain(server.error());
        return setStage(Stage::Silent);
    }
    server_ = *server;
    server_->setStateHandler([this](SoundServer::State state) { serverIs(state); });
    server_->setAvailabilityHandler([this] {
        if (availabilityHandler_) availabilityHandler_();
    });
    server_->setRefusalHandler([](const std::string& category, const std::string& reason) {
        complain(filled(translated("the sound server refuses to change '{category}': {reason}"),
                        {{"category", category}, {"reason", reason}}));
    });
    server_->setAttention(attention_);
    beginToWait();
    install(server_);
}

void SoundService::followOutputs() {
    if (outputs_ || !server_) return;
    outputs_ = server_->roleOutputs();
    if (!outputs_) return;
    outputs_->setChangeHandler([this] { tellOutputs(); });
    outputs_->follow();
}

void SoundService::tellOutputs() const {
    if (const auto handler = outputsHandler_) handler();
}

bool SoundService::isWriting() const {
    return server_ && (server_->isWriting() || isSwitchingOutputs());
}

bool SoundService::isSwitchingOutputs() const {
    return outputs_ && outputs_->state() == RoleOutputs::State::Changing;
}

void SoundService::setAttention(SoundServer::Attention attention) {
    attention_ = attention;
    if (server_) server_->setAttention(attention);
}

void SoundService::whenSettled(double atMostSeconds, std::function<void()> handler) {
    if (isSettled()) return handler();
    settledHandler_ = std::move(handler);
    settledAtLast_.start(atMostSeconds, [this] { tellThatSettled(); });
}

void SoundService::forgetWhenSettled() {
    settledHandler_ = nullptr;
    settledAtLast_.cancel();
}

void SoundService::tellThatSettled() {
    settledAtLast_.cancel();
    if (const auto handler = std::exchange(settledHandler_, nullptr)) handler();
}

void SoundService::serverIs(SoundServer::State state) {
    if (state == SoundServer::State::Ready) {
        patience_.cancel();
        setStage(Stage::Answering);
    } else if (stage_ == Stage::Answering && !patience_.isRunning()) {
        beginToWait();
    }
}

void SoundService::beginToWait() {
    patience_.start(patienceSeconds, [this] { setStage(Stage::Silent); });
}

void SoundService::setStage(Stage stage) {
    const bool wasSilent = isSilent();
    const RoleOutputs* const before = outputs();
    stage_ = stage;
    if (wasSilent != isSilent()) {
        complain(isSilent() ? translated("no sound server answers")
                            : translated("the sound server answers now"));
        if (silenceHandler_) silenceHandler_();
    }
    if (outputs() != before) tellOutputs();
    tellThatSettled();
}

}  // namespace shell
