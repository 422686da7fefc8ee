#include "backends/pulse/PulseAudioController.hpp"

#include "backends/pulse/VolumeService.hpp"

#include <utility>

PulseAudioController::PulseAudioController(NSString server)
    : service_(std::make_unique<pulse::VolumeService>(std::move(server))) {}

PulseAudioController::~PulseAudioController() = default;

bool PulseAudioController::getVolume(float& volume, const NSString& category) {
    const auto shown = service_->look(category).volume;
    if (shown) volume = *shown;
    return shown.has_value();
}

bool PulseAudioController::setVolumeTo(float volume, const NSString& category) {
    const float fraction = pulse::fractionFromRaw(pulse::rawFromFraction(volume));
    return service_->set(category, {fraction, Mute::Off});
}

std::optional<AVSystemController::Level> PulseAudioController::levelOf(const NSString& category) {
    const pulse::CategoryState shown = service_->look(category);
    return shown.volume ? std::optional(shown.level) : std::nullopt;
}

bool PulseAudioController::setMute(Mute mute, const NSString& category) {
    return service_->set(category, {.mute = mute});
}

NSString PulseAudioController::routeForCategory(const NSString& category) {
    return service_->look(category).route;
}

bool PulseAudioController::lasts(const NSString& category) const {
    return service_->lasts(category);
}

bool PulseAudioController::isWriting() const {
    return service_->isWriting();
}

void PulseAudioController::setAttention(Attention attention) {
    service_->setAttention(attention);
}

PulseAudioController::State PulseAudioController::state() const {
    return service_->state();
}

NSString PulseAudioController::refusal() const {
    return service_->refusal();
}

void PulseAudioController::setStateHandler(std::function<void(State)> handler) {
    service_->setStateHandler(std::move(handler));
}

void PulseAudioController::setAvailabilityHandler(std::function<void()> handler) {
    service_->announcer().setRereadHandler(std::move(handler));
}

void PulseAudioController::setRefusalHandler(RefusalHandler handler) {
    service_->setRefusalHandler(std::move(handler));
}
