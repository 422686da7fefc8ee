#include "backends/pulse/VolumeService.hpp"

#include "backends/pulse/Routes.hpp"
#include "backends/pulse/StreamGroups.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <utility>

namespace pulse {
namespace {

// For what comes, beside what is there.
bool isKeptByServer(const VolumeObject& object) {
    return object.kind == VolumeObject::Kind::Role ||
           object.kind == VolumeObject::Kind::Application;
}

}  // namespace

VolumeService::VolumeService(NSString server)
    : writer_(mirror_, {[this] { confirmed(); },
                        [this](const VolumeObject& object, const std::string& reason) {
                            refused(object, reason);
                        }}),
      poller_(mirror_,
              [this] {
                  if (!reader_) return;
                  reader_->refresh(Part::RoleEntries);
                  reader_->refresh(Part::Server);
              }),
      connection_(std::move(server),
                  {[this](PulseContext& context) { becameReady(context); }, [this] { lost(); },
                   [this](Part part) {
                       if (reader_) reader_->refresh(part);
                   }}),
      announcer_([this](const NSString& category) {
          return shownBy(category, objectForCategory(mirror_, category));
      }) {}

CategoryState VolumeService::look(const NSString& category) {
    const auto object = objectForCategory(mirror_, category);
    CategoryState shown = shownBy(category, object);
    if (isCategory(category)) announcer_.answered(*category, shown);
    if (object && isReady())
        memory_.watch(*object, mirror_, NSRunLoop::mainRunLoop().currentTime());
    if (object && isKeptByServer(*object)) poller_.lookedAt();
    return shown;
}

std::optional<Level> VolumeService::levelKnownOf(const VolumeObject& object) const {
    const auto remembered = memory_.remembered(object);
    if (remembered && streamsOf(mirror_, object).empty()) return remembered;
    return levelOf(mirror_, object);
}

// What is on its way counts as the object's already, so that nothing of what it passes on the
// way is shown.
CategoryState VolumeService::shownBy(const NSString& category,
                                     const std::optional<VolumeObject>& object) {
    CategoryState shown{std::nullopt, routeForCategory(mirror_, category, object)};
    if (!isReady()) return shown;
    const auto current = object ? levelKnownOf(*object) : std::nullopt;
    if (!current) return shown;
    const auto pending = writer_.pending(*object);
    shown.level = pending ? pending->appliedTo(*current) : *current;
    shown.volume = shown.level.heard();
    return shown;
}

// Whoever sets something shows it already: if nothing comes of it, he is told.
bool VolumeService::set(const NSString& category, const Setting& setting) {
    if (!isReady()) return false;
    const auto object = objectForCategory(mirror_, category);
    const auto level = object ? levelKnownOf(*object) : std::nullopt;
    if (!level) return false;
    const double now = NSRunLoop::mainRunLoop().currentTime();
    memory_.remember(*object, setting, *level, mirror_, now);
    if (setting.fraction) devices_.remember(*object, *setting.fraction, now);
    // What the server keeps for an application is replaced as a whole, and may not be there yet.
    const bool isOnlyKept =
        object->kind == VolumeObject::Kind::Application && streamsOf(mirror_, *object).empty();
    const Level whole = setting.appliedTo(*level);
    writer_.set(*object, isOnlyKept ? Setting{whole.volume, whole.mute} : setting);
    announcer_.answered(*category, shownBy(category, object));
    announcer_.changed();
    return true;
}

// What a stream has is kept for the next one by every server.
bool VolumeService::lasts(const NSString& category) const {
    const auto object = objectForCategory(mirror_, category);
    if (!object || object->kind != VolumeObject::Kind::Role) return true;
    return mirror_.givesEntryToStreams(object->name) || mirror_.hasAnotherMixer() ||
           !streamsOf(mirror_, *object).empty();
}

void VolumeService::becameReady(PulseContext& context) {
    context.subscribe();
    reader_.emplace(context, mirror_, [this](Part part) { mirrorChanged(part); });
    writer_.begin(context, *reader_);
}

// The mirror stays for the routes, which captions show also where the volume is unknown.
void VolumeService::lost() {
    writer_.end();
    memory_.forgetStreams();
    devices_.clear();
    poller_.stop();
    reader_.reset();
    setState(State::Unavailable);
    announcer_.changedAtOnce();
}

void VolumeService::mirrorChanged(Part part) {
    if (!reader_->isComplete()) return;
    if (part == Part::Streams) writer_.streamsChanged();
    if (part != Part::Clients && mirror_.lacksClients()) reader_->refresh(Part::Clients);
    setNewcomersRight();
    if (state_ == State::Ready) return tellWhatMoved();
    setState(State::Ready);
    announcer_.changedAtOnce();
    poller_.lookedAt();
}

// A port's change on PipeWire is a row of volumes, of which the last one counts.
void VolumeService::tellWhatMoved() {
    if (mirror_.server.pipeWire)
        announcer_.changed();
    else
        announcer_.refreshed();
}

// What is remembered of a role is compared with what the server keeps once nothing is on its way.
void VolumeService::confirmed() {
    setNewcomersRight();
    announcer_.changed();
}

void VolumeService::setNewcomersRight() {
    const double now = NSRunLoop::mainRunLoop().currentTime();
    const auto isMoving = [this](const VolumeObject& object) {
        return writer_.pending(object).has_value();
    };
    memory_.watchKeptRoles(mirror_, now);
    for (const VolumeObject& object : memory_.observe(mirror_, now, isMoving))
        writer_.set(object, memory_.settingFor(object), WriteQueue::Repeat::Send);
    for (const auto& [device, fraction] : devices_.observe(mirror_, now, isMoving))
        writer_.set(device, {.fraction = fraction});
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

void VolumeService::refused(const VolumeObject& object, const std::string& reason) {
    refusals_.emplace_back(categoryNaming(object), reason);
    tellingRefusals_.start(0, [this] { tellRefusal(); });
}

void VolumeService::tellRefusal() {
    const auto [object, reason] = std::move(refusals_.front());
    refusals_.pop_front();
    if (!refusals_.empty()) tellingRefusals_.start(0, [this] { tellRefusal(); });
    const auto handler = refusalHandler_;  // It may replace itself, or end this.
    if (handler) handler(object, reason);
}

}  // namespace pulse
