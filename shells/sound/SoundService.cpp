#include "shells/sound/SoundService.hpp"

#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/NSLog.hpp"

#include <utility>

namespace {

/// Stands in until the server is connected to: nothing is known yet but where sound usually goes.
class AwaitedService : public AVSystemController {
 public:
    std::string_view className() const override { return "AwaitedService"; }
    bool getVolume(float& /*volume*/, const NSString& /*category*/) override { return false; }
    bool setVolumeTo(float /*volume*/, const NSString& /*category*/) override { return false; }
    std::optional<Level> levelOf(const NSString& /*category*/) override { return std::nullopt; }
    bool setMute(Mute /*mute*/, const NSString& /*category*/) override { return false; }
    NSString routeForCategory(const NSString& /*category*/) override { return "Speaker"; }
};

void say(const std::string& what) {
    complain("tarnwick", what);
}

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
}

void SoundService::install(std::shared_ptr<AVSystemController> service) {
    AVSystemController::setSharedAVSystemController(std::move(service));
    if (changeHandler_) changeHandler_();
}

void SoundService::loadAhead() {
    if (stage_ == Stage::Simulated || connecting_ || loading_.joinable()) return;
    loading_ = std::jthread([this] { module_ = loadSoundServer(serverModule_); });
}

void SoundService::connect() {
    if (stage_ == Stage::Simulated || std::exchange(connecting_, true)) return;
    if (loading_.joinable())
        loading_.join();
    else
        module_ = loadSoundServer(serverModule_);
    auto [server, error] = openSoundServer(module_, std::nullopt);
    if (!server) {
        say(error);
        return setStage(Stage::Silent);
    }
    server_ = std::move(server);
    server_->setAnswersHandler([this](SoundServer::Answers answers) { serverAnswers(answers); });
    server_->setAvailabilityHandler([this] {
        if (availabilityHandler_) availabilityHandler_();
    });
    server_->setRefusalHandler([](const std::string& category, const std::string& reason) {
        say("the sound server refuses to change '" + category + "': " + reason);
    });
    server_->setAttention(attention_);
    beginToWait();
    install(server_->service());
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

void SoundService::serverAnswers(SoundServer::Answers answers) {
    if (answers == SoundServer::Answers::Yes) {
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
    stage_ = stage;
    if (wasSilent != isSilent()) {
        say(isSilent() ? "no sound server answers" : "the sound server answers now");
        if (silenceHandler_) silenceHandler_();
    }
    tellThatSettled();
}
