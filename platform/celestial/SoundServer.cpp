#include "platform/celestial/SoundServer.hpp"

namespace {

// The handler may replace itself, or end what holds it.
template <class Handler, class... Arguments>
void call(Handler handler, const Arguments&... arguments) {
    if (handler) handler(arguments...);
}

}  // namespace

bool SoundServer::getVolume(float& volume, const NSString& category) {
    const std::optional<Level> level = levelOf(category);
    if (level) volume = level->heard();
    return level.has_value();
}

bool SoundServer::setVolumeTo(float volume, const NSString& category) {
    if (volumeObserver_) volumeObserver_(category, volume);
    return change({.volume = volume, .mute = Mute::Off}, category);
}

bool SoundServer::setMute(Mute mute, const NSString& category) {
    return change({.mute = mute}, category);
}

void SoundServer::tellState(State state) const {
    call(stateHandler_, state);
}

void SoundServer::tellAvailability() const {
    call(availabilityHandler_);
}

void SoundServer::tellRefusal(const std::string& category, const std::string& reason) const {
    call(refusalHandler_, category, reason);
}
