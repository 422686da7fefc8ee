#include "backends/pulse/VolumeService.hpp"

#include "backends/pulse/Routes.hpp"
#include "backends/pulse/StreamGroups.hpp"

#include <utility>

namespace pulse {

VolumeService::VolumeService(NSString server)
    : writer_(mirror_, [this] { announcer_.changed(); }),
      connection_(std::move(server),
                  {[this](PulseContext& context) { becameReady(context); }, [this] { lost(); },
                   [this](Part part) {
                       if (reader_) reader_->refresh(part);
                   }}),
      announcer_([this](const std::string& category) { return shownBy(category); }) {}

CategoryState VolumeService::look(const NSString& category) {
    if (isCategory(category)) announcer_.watch(*category);
    return shownBy(category);
}

// A volume on its way counts as the object's already, so that nothing of what it passes on the
// way is shown.
CategoryState VolumeService::shownBy(const NSString& category) {
    CategoryState shown{std::nullopt, routeForCategory(mirror_, category)};
    if (!isReady()) return shown;
    const auto object = objectForCategory(mirror_, category);
    const auto current = object ? volumeOf(mirror_, *object) : std::nullopt;
    if (!current) return shown;
    const auto pending = writer_.pending(*object);
    shown.volume = pending ? pending : current;
    return shown;
}

bool VolumeService::set(const NSString& category, float fraction) {
    if (!isReady()) return false;
    const auto object = objectForCategory(mirror_, category);
    if (!object || !volumeOf(mirror_, *object)) return false;
    writer_.set(*object, fractionFromRaw(rawFromFraction(fraction)));
    announcer_.changed();
    return true;
}

void VolumeService::becameReady(PulseContext& context) {
    context.subscribe();
    reader_.emplace(context, mirror_, [this](Part part) { mirrorChanged(part); });
    writer_.begin(context, *reader_);
}

// The mirror stays for the routes, which captions show also where the volume is unknown.
void VolumeService::lost() {
    writer_.end();
    reader_.reset();
    setState(State::Unavailable);
    announcer_.changedAtOnce();
}

void VolumeService::mirrorChanged(Part part) {
    if (!reader_->isComplete()) return;
    if (part == Part::Streams) writer_.streamsChanged();
    if (state_ == State::Ready) return announcer_.changed();
    setState(State::Ready);
    announcer_.changedAtOnce();
}

void VolumeService::setState(State state) {
    state_ = state;
    tellingState_.start(0, [this] { tellState(); });
}

void VolumeService::tellState() {
    if (std::exchange(toldState_, state_) == state_ || !stateHandler_) return;
    const auto handler = stateHandler_;  // It may replace itself, or end this.
    handler(state_);
}

}  // namespace pulse
