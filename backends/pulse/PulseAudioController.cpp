#include "backends/pulse/PulseAudioController.hpp"

#include "backends/pulse/Announcer.hpp"
#include "backends/pulse/BalanceMemory.hpp"
#include "backends/pulse/CategoryMapping.hpp"
#include "backends/pulse/Connection.hpp"
#include "backends/pulse/MirrorReader.hpp"
#include "backends/pulse/WriteQueue.hpp"

#include <optional>
#include <utility>

using pulse::VolumeObject;

class PulseAudioController::Service {
 public:
    explicit Service(NSString server);

    bool isReady() { return connection_.context() && reader_ && reader_->isComplete(); }
    pulse::CategoryState look(const NSString& category);
    bool set(const NSString& category, float fraction);

    bool isWriting() const { return !writes_.isEmpty(); }

    State state() const { return state_; }
    void setStateHandler(std::function<void(State)> handler) { stateHandler_ = std::move(handler); }
    pulse::Announcer& announcer() { return announcer_; }

 private:
    void becameReady(pulse::PulseContext& context);
    void lost();
    void mirrorChanged();
    void setState(State state);
    void tellState();
    void send(const VolumeObject& object, float fraction, std::uint64_t ticket);
    void confirm(const VolumeObject& object, std::uint64_t ticket);

    State state_ = State::Connecting;
    State toldState_ = State::Connecting;
    std::function<void(State)> stateHandler_;
    pulse::OneShotTimer tellingState_;

    pulse::ServerMirror mirror_;
    pulse::BalanceMemory balances_;
    pulse::WriteQueue writes_;
    std::optional<pulse::MirrorReader> reader_;
    // The last two: the connection's end withdraws every answer to the others.
    pulse::Connection connection_;
    pulse::Announcer announcer_;
};

PulseAudioController::Service::Service(NSString server)
    : writes_([this](const auto& object, float fraction,
                     std::uint64_t ticket) { send(object, fraction, ticket); },
              [this](const auto& object, std::uint64_t ticket) { confirm(object, ticket); }),
      connection_(
          std::move(server),
          {[this](pulse::PulseContext& context) { becameReady(context); }, [this] { lost(); },
           [this](pulse::Part part) {
               if (reader_) reader_->refresh(part);
           }}),
      announcer_([this](const std::string& category) { return look(category); }) {}

// A volume on its way counts as the object's already, so that nothing of what it passes on the
// way is shown.
pulse::CategoryState PulseAudioController::Service::look(const NSString& category) {
    pulse::CategoryState shown{std::nullopt, pulse::routeForCategory(mirror_, category)};
    if (!isReady()) return shown;
    const auto object = pulse::objectForCategory(mirror_, category);
    const auto current = object ? mirror_.volumeOf(*object) : std::nullopt;
    if (!current) return shown;
    const auto pending = writes_.pending(*object);
    shown.volume = pending ? *pending : pulse::effectiveFraction(current->volume, current->mute);
    return shown;
}

bool PulseAudioController::Service::set(const NSString& category, float fraction) {
    if (!isReady()) return false;
    const auto object = pulse::objectForCategory(mirror_, category);
    const auto current = object ? mirror_.volumeOf(*object) : std::nullopt;
    if (!current) return false;
    if (!writes_.pending(*object)) balances_.observe(*object, current->volume);
    writes_.set(*object, pulse::fractionFromRaw(pulse::rawFromFraction(fraction)));
    announcer_.changed();
    return true;
}

void PulseAudioController::Service::becameReady(pulse::PulseContext& context) {
    context.subscribe();
    reader_.emplace(context, mirror_, [this] { mirrorChanged(); });
}

// The mirror stays for the routes, which captions show also where the volume is unknown.
void PulseAudioController::Service::lost() {
    reader_.reset();
    writes_.clear();
    balances_.clear();
    setState(State::Unavailable);
    announcer_.changedAtOnce();
}

void PulseAudioController::Service::mirrorChanged() {
    if (!reader_->isComplete()) return;
    if (state_ == State::Ready) return announcer_.changed();
    setState(State::Ready);
    announcer_.changedAtOnce();
}

void PulseAudioController::Service::setState(State state) {
    state_ = state;
    tellingState_.start(0, [this] { tellState(); });
}

void PulseAudioController::Service::tellState() {
    if (std::exchange(toldState_, state_) == state_ || !stateHandler_) return;
    const auto handler = stateHandler_;  // It may replace itself, or end this.
    handler(state_);
}

void PulseAudioController::Service::send(const VolumeObject& object, float fraction,
                                         std::uint64_t ticket) {
    pulse::PulseContext* context = connection_.context();
    const auto current = mirror_.volumeOf(object).value_or(pulse::ObjectVolume{});
    const pa_cvolume volume = balances_.volumeAt(object, pulse::rawFromFraction(fraction));
    const auto written = [this, object, ticket] { writes_.acknowledged(object, ticket); };
    if (!context) return;
    if (object.kind == VolumeObject::Kind::Sink)
        return context->writeSinkVolume(object.name, current.mute, volume, written);
    context->writeRoleVolume(object.name, mirror_.rememberedDevice(object.name), volume, written);
}

void PulseAudioController::Service::confirm(const VolumeObject& object, std::uint64_t ticket) {
    const pulse::Part part =
        object.kind == VolumeObject::Kind::Sink ? pulse::Part::Sinks : pulse::Part::RoleEntries;
    reader_->refresh(part, [this, object, ticket] {
        writes_.confirmed(object, ticket);
        announcer_.changed();
    });
}

PulseAudioController::PulseAudioController(NSString server)
    : service_(std::make_unique<Service>(std::move(server))) {}

PulseAudioController::~PulseAudioController() = default;

bool PulseAudioController::getVolume(float& volume, const NSString& category) {
    const auto shown = service_->look(category).volume;
    if (shown) volume = *shown;
    return shown.has_value();
}

bool PulseAudioController::setVolumeTo(float volume, const NSString& category) {
    return service_->set(category, volume);
}

NSString PulseAudioController::routeForCategory(const NSString& category) {
    return service_->look(category).route;
}

bool PulseAudioController::isWriting() const {
    return service_->isWriting();
}

PulseAudioController::State PulseAudioController::state() const {
    return service_->state();
}

void PulseAudioController::setStateHandler(std::function<void(State)> handler) {
    service_->setStateHandler(std::move(handler));
}

void PulseAudioController::setAvailabilityHandler(std::function<void()> handler) {
    service_->announcer().setRereadHandler(std::move(handler));
}
