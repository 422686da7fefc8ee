#include "shells/desktop/SoundService.hpp"

#include "platform/celestial/SimulatedAudioDevice.hpp"

SoundService::SoundService(SoundSource /*source*/) {
    useSimulatedDevice();
}

SoundService::~SoundService() = default;

void SoundService::useSimulatedDevice() {
    AVSystemController::setSharedAVSystemController(std::make_shared<SimulatedAudioDevice>());
    settled_ = true;
}
