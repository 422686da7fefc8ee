#include "bench/pulse/Measures.hpp"

#include "backends/glib/GLibRunLoop.hpp"
#include "backends/pulse/PulseServer.hpp"
#include "bench/pulse/BareClient.hpp"
#include "bench/pulse/Wiretap.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "tests/pulse/LiveMixer.hpp"
#include "tests/rigs/Waiting.hpp"

#include <glib.h>

#include <cmath>
#include <functional>
#include <memory>
#include <stdexcept>

namespace {

constexpr const char* sinkName = "spk";
constexpr const char* category = "Audio/Video";
constexpr int rounds = 1000;
// Fewer, because each waits until the service has settled.
constexpr int settledRounds = 300;

/// The service in a mixer, a bare client beside it, and a second client that observes both.
class Stage {
 public:
    explicit Stage(const rigs::SoundServer& server);
    ~Stage();

    Comparison acknowledgement();
    Comparison changeElsewhere();
    Comparison touchUntilKnown();

 private:
    using Action = std::function<void(unsigned volume)>;

    unsigned nextVolume();
    /// Returns the time from the action until `done_`.
    double timeOf(const Action& action, unsigned volume);
    /// Waits until nothing of a round is in flight any more.
    void settle(unsigned volume);
    void alternate(Comparison& comparison, int count, const Action& bare, const Action& service);
    double volumeOf() const;

    std::shared_ptr<SoundServer> controller_;
    std::unique_ptr<LiveMixer> mixer_;
    BareClient bare_;
    BareClient settled_;
    BareClient second_;
    std::shared_ptr<NSObject> observer_ = std::make_shared<NSObject>();
    std::function<void(double)> onNotification_;
    bool done_ = false;
    bool exact_ = true;  // Whether a round ends on exactly the requested volume.
    unsigned counter_ = 0;
};

Stage::Stage(const rigs::SoundServer& server)
    : controller_(pulse::connectToServer(server.address())),
      mixer_(std::make_unique<LiveMixer>(controller_, std::vector<std::string>{category})),
      bare_(server.address(), sinkName, BareClient::Settling::None),
      settled_(server.address(), sinkName, BareClient::Settling::AsTheService),
      second_(server.address(), sinkName, BareClient::Settling::None) {
    NSNotificationCenter::defaultCenter().add(
        observer_,
        [this](const NSNotification& notification) {
            if (!onNotification_) return;
            onNotification_(
                notification.userInfo
                    .objectForKey(AVSystemController_EffectiveVolumeNotificationParameter_Volume)
                    .floatValue());
        },
        AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
    if (!rigs::waitUntil([&] { return volumeOf() >= 0; }))
        throw std::runtime_error("the service finds no device");
}

Stage::~Stage() {
    NSNotificationCenter::defaultCenter().removeObserver(observer_.get());
    setAcknowledgementHandler({});
}

double Stage::volumeOf() const {
    float volume = -1;
    return controller_->getVolume(volume, category) ? static_cast<double>(volume) : -1;
}

// Never near the previous value.
unsigned Stage::nextVolume() {
    ++counter_;
    return 1000 + (counter_ * 24631) % 60000;
}

double Stage::timeOf(const Action& action, unsigned volume) {
    done_ = false;
    const gint64 start = g_get_monotonic_time();
    action(volume);
    while (!done_) {
        g_main_context_iteration(nullptr, TRUE);
        if (g_get_monotonic_time() - start > 5 * G_USEC_PER_SEC)
            throw std::runtime_error("a round does not end");
    }
    return static_cast<double>(g_get_monotonic_time() - start) / 1000;
}

void Stage::settle(unsigned volume) {
    const auto isThere = [&] {
        return bare_.known() == volume && second_.known() == volume && settled_.known() == volume &&
               std::abs(volumeOf() * 65536 - volume) < 1;
    };
    if (!rigs::waitUntil(isThere)) throw std::runtime_error("a round leaves another volume");
    // The service reads once more after its own sets; 2 ms without an event are the end of it.
    rigs::runFor(0.002);
}

void Stage::alternate(Comparison& comparison, int count, const Action& bare,
                      const Action& service) {
    for (int i = 0; i < count; ++i) {
        for (const bool ours : {false, true}) {
            const unsigned volume = nextVolume();
            Samples& samples = ours ? comparison.service : comparison.bare;
            samples.push_back(timeOf(ours ? service : bare, volume));
            settle(exact_ ? volume : second_.known());
        }
    }
}

Comparison Stage::acknowledgement() {
    Comparison comparison{"set acknowledged", {}, {}};
    setAcknowledgementHandler([this] { done_ = true; });
    alternate(
        comparison, rounds, [this](unsigned volume) { bare_.set(volume); },
        [this](unsigned volume) {
            controller_->setVolumeTo(static_cast<float>(volume) / 65536, category);
        });
    setAcknowledgementHandler({});
    return comparison;
}

Comparison Stage::changeElsewhere() {
    Comparison comparison{"change elsewhere until told", {}, {}};
    unsigned awaited = 0;
    settled_.setHandler([&](unsigned volume) { done_ |= volume == awaited; });
    alternate(
        comparison, settledRounds,
        [&](unsigned volume) {
            awaited = volume;
            bare_.set(volume);
        },
        [&](unsigned volume) {
            awaited = 0;
            onNotification_ = [this, volume](double told) {
                done_ |= std::abs(told * 65536 - volume) < 1;
            };
            bare_.set(volume);
        });
    settled_.setHandler({});
    onNotification_ = {};
    return comparison;
}

Comparison Stage::touchUntilKnown() {
    Comparison comparison{"touch until a second client knows", {}, {}};
    exact_ = false;  // A touch has the slider's resolution.
    mixer_->press(0);
    second_.setHandler([this](unsigned) { done_ = true; });
    alternate(
        comparison, rounds, [this](unsigned volume) { bare_.set(volume); },
        [this](unsigned volume) { mixer_->dragTo(0, static_cast<double>(volume) / 65536); });
    second_.setHandler({});
    mixer_->lift();
    return comparison;
}

}  // namespace

std::vector<Comparison> measure(const rigs::SoundServer& server) {
    Stage stage(server);
    return {stage.acknowledgement(), stage.changeElsewhere(), stage.touchUntilKnown()};
}
