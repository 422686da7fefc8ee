#include "backends/pulse/PulseAudioController.hpp"

#include "backends/pulse/PulseServer.hpp"
#include "backends/pulse/categories/Routes.hpp"
#include "backends/pulse/categories/StreamGroups.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <utility>

namespace pulse {
namespace {

// For future streams, besides the current ones.
bool isKeptByServer(const VolumeObject& object) {
    return object.kind == VolumeObject::Kind::Role ||
           object.kind == VolumeObject::Kind::Application;
}

}  // namespace

PulseAudioController::PulseAudioController(NSString address)
    : writer_(mirror_, {[this] { confirmed(); },
                        [this](const VolumeObject& object, const std::string& reason) {
                            refused(object, reason);
                        }}),
      poller_(mirror_,
              [this] {
                  if (!reader_) return;
                  reader_->refresh(Part::RestoreEntries);
                  reader_->refresh(Part::Server);
              }),
      connection_(std::move(address), ourApplicationName,
                  {[this](PulseContext& context) { becameReady(context); }, [this] { lost(); },
                   [this](Part part) {
                       if (reader_) reader_->refresh(part);
                   }}),
      announcer_([this](const NSString& category) {
          return shownBy(category, objectForCategory(mirror_, category));
      }) {
    announcer_.setRereadHandler([this] { tellAvailability(); });
}

std::shared_ptr<SoundServer> connectToServer(const NSString& address) {
    return std::make_shared<PulseAudioController>(address);
}

CategoryState PulseAudioController::look(const NSString& category) {
    const auto object = objectForCategory(mirror_, category);
    CategoryState shown = shownBy(category, object);
    if (isCategory(category)) announcer_.answered(*category, shown);
    if (object && isReady())
        memory_.watch(*object, mirror_, NSRunLoop::mainRunLoop().currentTime());
    if (object && isKeptByServer(*object)) poller_.lookedAt();
    return shown;
}

std::optional<Level> PulseAudioController::levelKnownOf(const VolumeObject& object) const {
    const auto remembered = memory_.remembered(object);
    if (remembered && streamsOf(mirror_, object).empty()) return remembered;
    return pulse::levelOf(mirror_, object);
}

// Pending values count as the object's current ones, so that intermediate values never show.
CategoryState PulseAudioController::shownBy(const NSString& category,
                                            const std::optional<VolumeObject>& object) {
    CategoryState shown{std::nullopt, pulse::routeForCategory(mirror_, category, object)};
    if (!isReady()) return shown;
    const auto current = object ? levelKnownOf(*object) : std::nullopt;
    if (!current) return shown;
    const auto pending = writer_.pending(*object);
    shown.level = pending ? pending->appliedTo(*current) : *current;
    shown.volume = shown.level.heard();
    return shown;
}

std::optional<AVSystemController::Level> PulseAudioController::levelOf(const NSString& category) {
    const CategoryState shown = look(category);
    return shown.volume ? std::optional(shown.level) : std::nullopt;
}

// The caller shows the new value already; if the write has no effect, the row must be told.
bool PulseAudioController::change(const Change& change, const NSString& category) {
    if (!isReady()) return false;
    Setting setting{.mute = change.mute};
    if (change.volume) setting.fraction = fractionFromRaw(rawFromFraction(*change.volume));
    const auto object = objectForCategory(mirror_, category);
    const auto level = object ? levelKnownOf(*object) : std::nullopt;
    if (!level) return false;
    const double now = NSRunLoop::mainRunLoop().currentTime();
    memory_.remember(*object, setting, *level, mirror_, now);
    if (setting.fraction) devices_.remember(*object, *setting.fraction, now);
    // An application's entry is replaced as a whole, and may not exist yet.
    const bool isOnlyKept =
        object->kind == VolumeObject::Kind::Application && streamsOf(mirror_, *object).empty();
    const Level whole = setting.appliedTo(*level);
    writer_.set(*object, isOnlyKept ? Setting{whole.volume, whole.mute} : setting);
    announcer_.answered(*category, shownBy(category, object));
    announcer_.changed();
    return true;
}

// Every server stores a stream's level for the next one.
bool PulseAudioController::lasts(const NSString& category) const {
    const auto object = objectForCategory(mirror_, category);
    if (!object || object->kind != VolumeObject::Kind::Role) return true;
    return mirror_.givesEntryToStreams(object->name) || mirror_.hasAnotherMixer() ||
           !streamsOf(mirror_, *object).empty();
}

void PulseAudioController::setAttention(Attention attention) {
    poller_.setAttention(attention);
    if (!isReady()) poller_.stop();
}

void PulseAudioController::becameReady(PulseContext& context) {
    context.subscribe();
    reader_.emplace(context, mirror_, [this](Part part) { mirrorChanged(part); });
    server_.emplace(context, *reader_);
    writer_.begin(*server_);
}

// The mirror keeps the routes, which captions show even while the volume is unknown.
void PulseAudioController::lost() {
    writer_.end();
    outputs_.end();
    server_.reset();
    knownRefusals_.clear();
    memory_.forgetStreams();
    devices_.clear();
    poller_.stop();
    reader_.reset();
    setState(State::Unavailable);
    announcer_.changedAtOnce();
}

void PulseAudioController::mirrorChanged(Part part) {
    if (!reader_->isComplete()) return;
    if (part == Part::SinkInputs) writer_.sinkInputsChanged();
    setNewcomersRight();
    if (state_ == State::Ready) {
        outputs_.mirrorChanged();
        return tellWhatMoved();
    }
    setState(State::Ready);
    outputs_.begin(*server_);
    announcer_.changedAtOnce();
    poller_.lookedAt();
}

// A port change on PipeWire reports several volumes, of which the last one counts.
void PulseAudioController::tellWhatMoved() {
    if (mirror_.server.pipeWire)
        announcer_.changed();
    else
        announcer_.refreshed();
}

// A remembered role is compared with its entry once nothing is pending.
void PulseAudioController::confirmed() {
    setNewcomersRight();
    announcer_.changed();
}

void PulseAudioController::setNewcomersRight() {
    const double now = NSRunLoop::mainRunLoop().currentTime();
    const auto isMoving = [this](const VolumeObject& object) {
        return writer_.pending(object).has_value();
    };
    memory_.watchKeptRoles(mirror_, now);
    for (const VolumeObject& object : memory_.observe(mirror_, now, isMoving))
        writer_.set(object, memory_.settingFor(object), VolumeWriter::Repeat::Send);
    for (const auto& [device, fraction] : devices_.observe(mirror_, now, isMoving))
        writer_.set(device, {.fraction = fraction});
}

void PulseAudioController::setState(State state) {
    state_ = state;
    tellingState_.start(0, [this] { tellNewState(); });
}

void PulseAudioController::tellNewState() {
    if (std::exchange(toldState_, state_) != state_) tellState(state_);
}

// A request for the current value is granted to any client and may come in the middle of a drag: it
// does not end a refusal.
void PulseAudioController::refused(const VolumeObject& object, const std::string& reason) {
    const auto refusal = std::pair(categoryNaming(object), reason);
    if (!knownRefusals_.insert(refusal).second) return;
    debug("sound", "the server refuses to change '" + refusal.first + "': " + reason);
    refusals_.push_back(refusal);
    tellingRefusals_.start(0, [this] { tellNextRefusal(); });
}

void PulseAudioController::tellNextRefusal() {
    const auto [object, reason] = std::move(refusals_.front());
    refusals_.pop_front();
    if (!refusals_.empty()) tellingRefusals_.start(0, [this] { tellNextRefusal(); });
    tellRefusal(object, reason);
}

}  // namespace pulse
